#include "cli/run/run_record.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "base/ansi.h"
#include "cli/flags/option_table.h"
#include "cli/terminal/terminal_text.h"
#include "platform/path_lookup.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

using nlohmann::ordered_json;
using platform::eFileAction;

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

ordered_json PlaceJson(const eMessagePlace& place) {
    ordered_json json = ordered_json::object();
    const auto add = [&json](const char* key, const std::string& value) {
        if (!value.empty()) {
            json[key] = value;
        }
    };
    add("node", place.node);
    add("property", place.property);
    add("animation", place.animation);
    add("material", place.material);
    add("map", place.map);
    add("file", place.file);
    return json;
}

ordered_json FileJson(const std::string& path, eFileAction action) {
    std::error_code error;
    const auto size = std::filesystem::file_size(platform::PathFromUtf8(path), error);
    return {{"path", path}, {"bytes", error ? 0 : size}, {"action", ActionWord(action)}};
}

}  // namespace

eToldMessage Utf8Message(const standalone::eShownMessage& shown) {
    const eMessagePlace& place = shown.message.place;
    return {shown.message.id,
            {ToUtf8(place.node), ToUtf8(place.property), ToUtf8(place.animation), ToUtf8(place.material),
             ToUtf8(place.map), ToUtf8(place.file)},
            ToUtf8(shown.title),
            {ToUtf8(shown.message.text.russian), ToUtf8(shown.message.text.english)}};
}

int eRunRecord::Count(eSeverity severity) const {
    return static_cast<int>(std::ranges::count(messages, severity, &eToldMessage::Severity));
}

int eRunRecord::WrittenModels() const {
    return static_cast<int>(std::ranges::count(models, false, &eModelReport::skipped));
}

void eRunRecord::NoteFile(eFileAction action, const std::string& path) {
    if (action == eFileAction::Lost) {
        files.erase(path);
    } else if (action == eFileAction::Kept) {
        files.emplace(path, action);  // what the run itself has written counts as written
    } else {
        files[path] = action;
    }
}

int eRunRecord::ChangedFiles() const {
    return static_cast<int>(
        std::ranges::count_if(files, [](const auto& file) { return file.second != eFileAction::Kept; }));
}

ordered_json MessageJson(const eToldMessage& message) {
    const eMessageRow& row = RowOf(message.id);
    return {{"code", row.code},
            {"kind", SeverityWord(message.Severity())},
            {"place", PlaceJson(message.place)},
            {"title", message.title},
            {"text", message.text.russian},
            {"english", message.text.english},
            {"cure", row.cure},
            {"russianCure", ToUtf8(row.russianCure)}};
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

}  // namespace cli
