#pragma once

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "platform/file_events.h"
#include "run/options.h"
#include "run/run_report.h"
#include "standalone/terminal/terminal_face.h"

namespace cli {

// A message of the run, UTF-8.
struct eToldMessage {
    eMessageId id = eMessageId::SystemError;
    eMessagePlace place = {};
    std::string title = {};
    eBilingual text = {};

    eSeverity Severity() const { return SeverityOf(RowOf(id).kind); }
};

eToldMessage Utf8Message(const standalone::eShownMessage& message);

// What a run has done, for the report file and the closing line.
struct eRunRecord {
    std::string scene;  // as the user named it, UTF-8
    eExportOptions options;
    std::vector<eModelReport> models;
    std::vector<eToldMessage> messages;
    std::map<std::string, platform::eFileAction> files;  // by path on disk; the last action of each file
    bool cancelled = false;
    double seconds = 0;
    int exitCode = 0;

    void NoteFile(platform::eFileAction action, const std::string& path);
    int Count(eSeverity severity) const;
    int CountErrors() const { return Count(eSeverity::Error) + Count(eSeverity::Fatal); }
    int WrittenModels() const;
    int ChangedFiles() const;
};

// The version of the report's keys; rises when one is taken out or changes its meaning. They are described in
// docs/report.schema.json.
inline constexpr int kReportSchema = 2;

// The report as JSON text, UTF-8; keys in a fixed order, files sorted by path with their present sizes.
std::string ReportText(const eRunRecord& record);

// A message as the report has it.
nlohmann::ordered_json MessageJson(const eToldMessage& message);

}  // namespace cli
