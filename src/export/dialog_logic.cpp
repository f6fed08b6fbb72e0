#include "export/dialog_logic.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "base/ansi.h"
#include "base/number_text.h"
#include "messages/phrase.h"
#include "messages/tell.h"
#include "run/export.h"

namespace {

constexpr std::size_t kFrameLength = 256;

using Fields = eDialogFields;

constexpr eDialogControl kControls[] = {
    {1002, eDialogControlKind::CheckBox, "Мэш"_ansi, true, &Fields::exportMesh},
    {1003, eDialogControlKind::CheckBox, "Анимация"_ansi, true, &Fields::exportAnimation},
    {1018, eDialogControlKind::CheckBox, "Инверсная кинематика"_ansi, false, &Fields::exportIK},
    {1021, eDialogControlKind::Edit, "Путь к ресурсам игры:"_ansi, true, &Fields::resourceRoot},
    {1024, eDialogControlKind::Edit, "Исходный каталог с общими текстурами:"_ansi, true,
     &Fields::commonTextureSource},
    {1028, eDialogControlKind::Edit, "Каталог с общими текстурами в игре:"_ansi, true,
     &Fields::commonTextureTarget},
    {1008, eDialogControlKind::CheckBox, "Геометрия"_ansi, true, &Fields::exportGeometry},
    {1019, eDialogControlKind::CheckBox, "Источники света\nи камеры"_ansi, true,
     &Fields::exportLightsCameras},
    {1161, eDialogControlKind::Edit, "Кадр №:"_ansi, true, {}},
    {1162, eDialogControlKind::Spinner, "Кадр №:"_ansi, true, &Fields::staticFrame},
    {1027, eDialogControlKind::CheckBox, "Только в текущем диапазоне кадров"_ansi, true,
     &Fields::currentRangeOnly},
    {1023, eDialogControlKind::CheckBox, "Только выбранные объекты"_ansi, true, &Fields::selectedOnly},
    {1022, eDialogControlKind::CheckBox, "Обратная анимация"_ansi, true, &Fields::reverseAnimation},
    {1025, eDialogControlKind::Edit, "Начало:"_ansi, false, &Fields::frameStart},
    {1026, eDialogControlKind::Edit, "Конец:"_ansi, false, &Fields::frameEnd},
    {1, eDialogControlKind::Button, "Экспорт"_ansi, true, {}},
    {2, eDialogControlKind::Button, "Отмена"_ansi, true, {}},
};

struct eOptionPath {
    eName eExportOptions::*option;
    std::string Fields::*field;
    eMessageId whenEmpty;
    ePhrase label;
};

// In the order in which they are taken over.
constexpr eOptionPath kPaths[] = {
    {&eExportOptions::resourceRoot, &Fields::resourceRoot, eMessageId::OptionsNoResourceRoot,
     ePhrase::LabelResourceRoot},
    {&eExportOptions::commonTextureSource, &Fields::commonTextureSource, eMessageId::OptionsNoCommonSource,
     ePhrase::LabelCommonSource},
    {&eExportOptions::commonTextureTarget, &Fields::commonTextureTarget, eMessageId::OptionsNoCommonTarget,
     ePhrase::LabelCommonTarget},
};

// False, with a message, for a path that no run can use.
bool CheckPath(const eExportOptions& options, const eOptionPath& path, void* parent) {
    const std::string& value = (options.*path.option).Text();
    if (value.empty()) {
        Tell(parent, path.whenEmpty, {});
    } else if (value.size() > kLongestOptionPath) {
        Tell(parent, eMessageId::OptionsLongPath, {.file = value}, value.size(), kLongestOptionPath,
             Words(path.label), value);
    } else {
        return true;
    }
    return false;
}

bool TakePaths(eExportOptions& options, const eDialogFields& fields, void* parent) {
    for (const eOptionPath& path : kPaths) {
        options.*path.option = eName(fields.*path.field);
        if (!CheckPath(options, path, parent)) {
            return false;
        }
    }
    return true;
}

int ReadFrame(std::string_view text) {
    constexpr std::string_view kHexMark = "0x";
    constexpr int kHexBase = 16;
    text = text.substr(0, kFrameLength);
    if (!text.starts_with(kHexMark)) {
        return ReadInteger(text);
    }
    text.remove_prefix(kHexMark.size());
    std::uint32_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, kHexBase);
    return static_cast<int>(value);
}

}  // namespace

std::span<const eDialogControl> DialogControls() {
    return kControls;
}

eDialogFields ShowDialogFields(const Export& run) {
    const eExportOptions& options = run.options;
    return {.exportMesh = options.exportMesh != 0,
            .exportAnimation = options.exportAnimation != 0,
            .exportIK = options.exportIK != 0,
            .exportGeometry = options.exportGeometry != 0,
            .exportLightsCameras = options.exportLightsCameras != 0,
            .resourceRoot = options.resourceRoot,
            .commonTextureSource = options.commonTextureSource,
            .commonTextureTarget = options.commonTextureTarget,
            .frameStart = IntegerText(run.frameStart),
            .frameEnd = IntegerText(run.frameEnd),
            .currentRangeOnly = options.currentRangeOnly,
            .selectedOnly = options.selectedOnly,
            .reverseAnimation = options.reverseAnimation,
            .staticFrame = std::max(run.frameStart, std::min(0, run.frameEnd))};
}

bool TakeDialogFields(Export& run, const eDialogFields& fields, void* parent) {
    eExportOptions& options = run.options;
    options.exportMesh = fields.exportMesh;
    options.exportAnimation = fields.exportAnimation;
    options.exportIK = fields.exportIK;
    options.exportGeometry = fields.exportGeometry;
    options.exportLightsCameras = fields.exportLightsCameras;

    if (!TakePaths(options, fields, parent)) {
        return false;
    }

    run.frameStart = ReadFrame(fields.frameStart);
    run.frameEnd = ReadFrame(fields.frameEnd);
    options.currentRangeOnly = fields.currentRangeOnly;
    options.selectedOnly = fields.selectedOnly;
    options.reverseAnimation = fields.reverseAnimation;
    options.staticFrame = fields.staticFrame;
    return true;
}

bool CheckOptionPaths(const eExportOptions& options, void* parent) {
    return std::ranges::all_of(kPaths,
                               [&](const eOptionPath& path) { return CheckPath(options, path, parent); });
}
