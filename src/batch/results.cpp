#include "batch/results.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "batch/build_folder.h"
#include "messages/utf8_words.h"
#include "platform/folder.h"
#include "platform/folder_memory.h"
#include "platform/path_text.h"
#include "platform/utf8_path.h"

namespace batch {

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using platform::PathFromUtf8;

constexpr std::array kKinds = {"fatal", "error", "warning", "advice"};
constexpr std::array kCounts = {ePhrase::CountFatal, ePhrase::CountError, ePhrase::CountWarning,
                                ePhrase::CountAdvice};

// What a batch asks of a report.
struct eReport {
    struct eTold {
        std::string kind;
        std::string code;
        eBilingual text;
    };

    int exitCode = 0;
    int models = 0;                  // written
    std::vector<std::string> files;  // that lie there
    std::vector<eTold> messages;
};

eReport ReportFrom(const ordered_json& json) {
    eReport report;
    report.exitCode = json.at("exit").get<int>();
    for (const ordered_json& model : json.at("models")) {
        report.models += model.at("skipped").get<bool>() ? 0 : 1;
    }
    for (const ordered_json& file : json.at("files")) {
        if (file.at("action") != "deleted") {
            report.files.push_back(file.at("path").get<std::string>());
        }
    }
    for (const ordered_json& message : json.at("messages")) {
        report.messages.push_back(
            {message.at("kind").get<std::string>(),
             message.at("code").get<std::string>(),
             {message.at("text").get<std::string>(), message.at("english").get<std::string>()}});
    }
    return report;
}

// Nothing where there is none, or one that somebody has edited out of its form.
std::optional<eReport> ReadReport(const std::string& file) {
    std::ifstream stream(PathFromUtf8(file), std::ios::binary);
    const ordered_json json = ordered_json::parse(stream, nullptr, false);
    try {
        return json.is_object() ? std::optional(ReportFrom(json)) : std::nullopt;
    } catch (const ordered_json::exception&) {
        return std::nullopt;
    }
}

eBilingual LastLine(const std::string& file) {
    std::ifstream stream(PathFromUtf8(file), std::ios::binary);
    std::string last;
    for (std::string line; std::getline(stream, line);) {
        last = line.empty() ? last : line;
    }
    return last.empty() ? Utf8Words(ePhrase::BatchNoReport) : eBilingual{last, last};
}

bool HasLostFile(const eReport& report) {
    return std::ranges::any_of(report.files, [](const std::string& file) {
        std::error_code ignored;
        return !fs::exists(PathFromUtf8(file), ignored);
    });
}

// True if a file has come, in whatever spelling, that was looked for in vain.
bool HasFound(const std::string& sources) {
    constexpr std::string_view kMissing = "missing: ";
    std::ifstream stream(PathFromUtf8(sources), std::ios::binary);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(kMissing) &&
            platform::Exists(
                platform::PathTextFromUtf8(line.substr(kMissing.size())).value_or(std::string()))) {
            return true;
        }
    }
    return false;
}

void Remove(const std::string& file) {
    std::error_code ignored;
    fs::remove(PathFromUtf8(file), ignored);
}

void TakeMessages(eSceneResult& result, const eReport& report) {
    for (const eReport::eTold& message : report.messages) {
        ++result.messages[message.kind];
    }
    for (const char* kind : kKinds) {
        const auto worst = std::ranges::find(report.messages, kind, &eReport::eTold::kind);
        if (worst != report.messages.end()) {
            result.worst = worst->text.At(worst->code);
            return;
        }
    }
}

eSceneResult ResultOf(const eBatchScene& scene, const std::string& buildFolder) {
    const eSceneFiles files = FilesOf(buildFolder, scene.path);
    const std::optional<eReport> report = ReadReport(files.exports.result);
    eSceneResult result;
    result.scene = scene.path;
    if (!report) {
        result.exitCode = eSceneResult::kNoReport;
        result.worst = LastLine(files.exports.log);
        return result;
    }
    result.exitCode = report->exitCode;
    result.models = report->models;
    TakeMessages(result, *report);
    return result;
}

// From the worst to the mildest.
std::size_t Rank(const eSceneResult& result) {
    if (!result.IsExported()) {
        return 0;
    }
    const auto kind =
        std::ranges::find_if(kKinds, [&](const char* name) { return result.messages.contains(name); });
    return 1 + static_cast<std::size_t>(kind - kKinds.begin());
}

eBilingual Counts(const eSceneResult& result) {
    eBilingual counts;
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        if (const auto count = result.messages.find(kKinds[i]); count != result.messages.end()) {
            counts.AddToList(Utf8Words(kCounts[i], count->second));
        }
    }
    return counts.IsEmpty() ? Utf8Words(ePhrase::BatchNoExport) : counts;
}

std::string FirstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

}  // namespace

eReportTimes ReportTimes(const std::string& buildFolder, const std::vector<eBatchScene>& scenes) {
    eReportTimes times;
    for (const eBatchScene& scene : scenes) {
        std::error_code error;
        const auto time =
            fs::last_write_time(PathFromUtf8(FilesOf(buildFolder, scene.path).exports.result), error);
        if (!error) {
            times[scene.path] = time.time_since_epoch().count();
        }
    }
    return times;
}

void ForgetOutdated(const std::string& buildFolder, const std::vector<eBatchScene>& scenes,
                    bool keepsManifests) {
    platform::RememberFolders(true);  // thousands of scenes look for the same files in vain
    for (const eBatchScene& scene : scenes) {
        const eSceneFiles files = FilesOf(buildFolder, scene.path);
        const std::optional<eReport> report = ReadReport(files.exports.result);
        std::error_code ignored;
        const bool isListed = !keepsManifests || fs::exists(PathFromUtf8(files.manifest), ignored);
        if (!report || HasLostFile(*report) || !isListed) {
            Remove(files.exports.result);
        }
        for (const eStepFiles& step : {files.models, files.exports}) {
            if (HasFound(step.sources)) {
                Remove(step.result);
            }
        }
    }
    platform::RememberFolders(false);
}

std::vector<eSceneResult> ReadResults(const std::string& buildFolder, const std::vector<eBatchScene>& scenes,
                                      const eReportTimes& before) {
    const eReportTimes now = ReportTimes(buildFolder, scenes);
    std::vector<eSceneResult> results;
    for (const eBatchScene& scene : scenes) {
        eSceneResult& result = results.emplace_back(ResultOf(scene, buildFolder));
        const auto time = now.find(scene.path);
        const auto old = before.find(scene.path);
        result.hasRun = time != now.end() && (old == before.end() || old->second != time->second);
    }
    std::ranges::stable_sort(results, {}, Rank);
    return results;
}

std::string ResultText(const std::vector<eSceneResult>& results, eLanguage language) {
    std::string text;
    for (const eSceneResult& result : results) {
        if (Rank(result) <= kKinds.size()) {
            text += Counts(result).At(result.scene).In(language) + "\n  " +
                    FirstLine(result.worst.In(language)) + "\n";
        }
    }
    const auto exported = std::ranges::count(results, true, &eSceneResult::IsExported);
    const auto now = std::ranges::count_if(
        results, [](const eSceneResult& result) { return result.hasRun && result.IsExported(); });
    const std::ptrdiff_t all = std::ssize(results);
    return text + Say(language, ePhrase::BatchScenes, all, now, exported - now, all - exported) + "\n";
}

ordered_json ResultJson(const std::vector<eSceneResult>& results) {
    ordered_json scenes = ordered_json::array();
    for (const eSceneResult& result : results) {
        ordered_json& scene = scenes.emplace_back();
        scene["scene"] = result.scene;
        scene["ran"] = result.hasRun;
        scene["exit"] =
            result.exitCode == eSceneResult::kNoReport ? ordered_json() : ordered_json(result.exitCode);
        scene["models"] = result.models;
        scene["messages"] = result.messages;
        scene["worst"] = result.worst.english;
    }
    return {{"schema", kBatchSchema}, {"scenes", scenes}};
}

}  // namespace batch
