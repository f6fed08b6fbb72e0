// What came of the scenes of a batch, from their reports.
#pragma once

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "batch/scene_list.h"

namespace batch {

// The version of the keys of the JSON; rises when one is taken out or changes its meaning.
inline constexpr int kBatchSchema = 1;

struct eSceneResult {
    std::string scene;
    bool hasRun = false;                  // in this call; else it was up to date, or its turn never came
    int exitCode = 0;                     // of its last export; kNoReport where that left none
    int models = 0;                       // written
    std::map<std::string, int> messages;  // by kind: "fatal", "error", "warning", "advice"
    eBilingual worst;                     // its first message of the worst kind, or the end of its log

    static constexpr int kNoReport = -1;
    // With or without errors to mend.
    bool IsExported() const { return exitCode == 0 || exitCode == 3; }
};

// When the reports in the build folder were written, by scene; for results that are to be told apart from
// those before.
using eReportTimes = std::map<std::string, std::int64_t>;
eReportTimes ReportTimes(const std::string& buildFolder, const std::vector<eBatchScene>& scenes);

// Takes away what is known of each scene that is out of date in a way which no file's time tells: a file is
// gone that its report names as written or kept, or its manifest where manifests are kept, the report itself
// is none, or a file has come that was missing.
void ForgetOutdated(const std::string& buildFolder, const std::vector<eBatchScene>& scenes,
                    bool keepsManifests);

// The worst first, equal ones in the order of the batch.
std::vector<eSceneResult> ReadResults(const std::string& buildFolder, const std::vector<eBatchScene>& scenes,
                                      const eReportTimes& before);

// A line for each scene that has told something, and one for all.
std::string ResultText(const std::vector<eSceneResult>& results, eLanguage language);
nlohmann::ordered_json ResultJson(const std::vector<eSceneResult>& results);

}  // namespace batch
