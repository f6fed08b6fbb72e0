#include "cli/flags/option_table.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "base/ansi.h"
#include "cli/flags/option_path.h"
#include "export/dialog_logic.h"
#include "messages/utf8_words.h"

namespace cli {

namespace {

using Options = eExportOptions;

constexpr eOptionField kFields[] = {
    {"exportMesh", &Options::exportMesh},
    {"exportAnimation", &Options::exportAnimation},
    {"optionC", &Options::optionC},
    {"optionD", &Options::optionD},
    {"optionE", &Options::optionE},
    {"exportIK", &Options::exportIK},
    {"optionG", &Options::optionG},
    {"optionH", &Options::optionH},
    {"exportGeometry", &Options::exportGeometry},
    {"optionJ", &Options::optionJ},
    {"optionK", &Options::optionK},
    {"exportLightsCameras", &Options::exportLightsCameras},
    {"optionM", &Options::optionM},
    {"optionN", &Options::optionN},
    {"optionO", &Options::optionO},
    {"ambientPercent", &Options::ambientPercent, eOptionKind::Number},
    {"optionP", &Options::optionP, eOptionKind::Number},
    {"staticFrame", &Options::staticFrame, eOptionKind::Number, false},
    {"reverseAnimation", &Options::reverseAnimation},
    {"selectedOnly", &Options::selectedOnly},
    {"currentRangeOnly", &Options::currentRangeOnly},
    {"resourceRoot", &Options::resourceRoot, eOptionKind::Folder},
    {"commonTextureSource", &Options::commonTextureSource, eOptionKind::Folder},
    {"commonTextureTarget", &Options::commonTextureTarget, eOptionKind::GamePath},
};

std::optional<int> ParseNumber(const std::string& text) {
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size() && !text.empty();
    return isWhole ? std::optional(value) : std::nullopt;
}

eBilingual SetNumber(Options& options, const eOptionField& field, const std::string& text) {
    const std::optional<int> value = ParseNumber(text);
    if (!value || (field.kind == eOptionKind::Flag && *value != 0 && *value != 1)) {
        return Utf8Words(field.kind == eOptionKind::Flag ? ePhrase::OptionSwitch : ePhrase::OptionNumber,
                         field.name);
    }
    if (const auto* flag = std::get_if<bool Options::*>(&field.member)) {
        options.** flag = *value != 0;
    } else {
        options.*std::get<int Options::*>(field.member) = *value;
    }
    return {};
}

eBilingual SetPath(Options& options, const eOptionField& field, const std::string& text) {
    const std::optional<std::string> path =
        field.kind == eOptionKind::Folder ? FolderOption(text) : OptionPath(text);
    if (!path) {
        return Utf8Words(field.kind == eOptionKind::Folder ? ePhrase::OptionNoText : ePhrase::OptionForeign,
                         field.name);
    }
    if (path->empty()) {
        return Utf8Words(ePhrase::OptionEmpty, field.name);
    }
    if (path->size() > kLongestOptionPath) {
        return Utf8Words(ePhrase::OptionTooLong, field.name, kLongestOptionPath);
    }
    options.*std::get<eName Options::*>(field.member) = eName(*path);
    return {};
}

}  // namespace

std::span<const eOptionField> OptionFields() {
    return kFields;
}

std::string OptionText(const eExportOptions& options, const eOptionField& field) {
    if (const auto* path = std::get_if<eName Options::*>(&field.member)) {
        return ToUtf8((options.**path).Text());
    }
    if (const auto* flag = std::get_if<bool Options::*>(&field.member)) {
        return options.**flag ? "1" : "0";
    }
    return std::to_string(options.*std::get<int Options::*>(field.member));
}

eBilingual SetOption(eExportOptions& options, const std::string& name, const std::string& text) {
    const auto field =
        std::ranges::find_if(kFields, [&](const eOptionField& f) { return name == f.name && f.isStored; });
    if (field == std::end(kFields)) {
        return Utf8Words(ePhrase::OptionUnknown, name);
    }
    return std::holds_alternative<eName Options::*>(field->member) ? SetPath(options, *field, text)
                                                                   : SetNumber(options, *field, text);
}

}  // namespace cli
