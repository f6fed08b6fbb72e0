#include "cli/run_record.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "base/ansi.h"
#include "cli/native_file.h"
#include "cli/option_table.h"
#include "cli/terminal_text.h"
#include "platform/path_lookup.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

using nlohmann::ordered_json;
using platform::eFileAction;
using standalone::eMessageKind;

ordered_json OptionsJson(const eExportOptions& options) {
    ordered_json json = ordered_json::object();
    for (const eOptionField& field : OptionFields()) {
        const std::string text = OptionText(options, field);
        if (field.kind == eOptionKind::Folder || field.kind == eOptionKind::GamePath) {
            json[field.name] = text;
        } else if (field.kind == eOptionKind::Flag) {
            json[field.name] = text != "0";
        } else {
            json[field.name] = std::stoi(text);
        }
    }
    return json;
}

ordered_json ModelJson(const eModelReport& model) {
    return {{"root", ToUtf8(model.root)},   {"folder", platform::DiskPath(model.folder.Text())},
            {"bones", model.bones},         {"meshes", model.meshes},
            {"materials", model.materials}, {"animations", model.animations},
            {"skipped", model.skipped}};
}

ordered_json MessageJson(const eToldMessage& message) {
    const char* kind = message.kind == eMessageKind::Fatal     ? "fatal"
                       : message.kind == eMessageKind::Warning ? "warning"
                                                               : "error";
    return {{"kind", kind}, {"title", message.title}, {"text", message.text}};
}

ordered_json FileJson(const std::string& path, eFileAction action) {
    std::error_code error;
    const auto size = std::filesystem::file_size(platform::PathFromUtf8(path), error);
    return {{"path", path}, {"bytes", error ? 0 : size}, {"action", ActionWord(action)}};
}

}  // namespace

int eRunRecord::CountErrors() const {
    return static_cast<int>(messages.size()) - CountWarnings();
}

int eRunRecord::CountWarnings() const {
    return static_cast<int>(std::ranges::count(messages, eMessageKind::Warning, &eToldMessage::kind));
}

int eRunRecord::WrittenModels() const {
    return static_cast<int>(std::ranges::count(models, false, &eModelReport::skipped));
}

int eRunRecord::ChangedFiles() const {
    return static_cast<int>(
        std::ranges::count_if(files, [](const auto& file) { return file.second != eFileAction::Kept; }));
}

std::string ReportText(const eRunRecord& record) {
    ordered_json json;
    json["schema"] = kReportSchema;
    json["scene"] = record.scene;
    json["options"] = OptionsJson(record.options);
    json["models"] = ordered_json::array();
    for (const eModelReport& model : record.models) {
        json["models"].push_back(ModelJson(model));
    }
    json["messages"] = ordered_json::array();
    for (const eToldMessage& message : record.messages) {
        json["messages"].push_back(MessageJson(message));
    }
    json["files"] = ordered_json::array();
    for (const auto& [path, action] : record.files) {
        json["files"].push_back(FileJson(path, action));
    }
    json["cancelled"] = record.cancelled;
    json["seconds"] = record.seconds;
    json["exit"] = record.exitCode;
    constexpr int kIndent = 2;
    return json.dump(kIndent, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

std::string WriteReport(const eRunRecord& record, const std::string& path) {
    return WriteNativeFile(path, ReportText(record));
}

}  // namespace cli
