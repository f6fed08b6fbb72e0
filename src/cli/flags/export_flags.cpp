#include "cli/flags/export_flags.h"

#include <algorithm>
#include <optional>

#include "cli/flags/option_path.h"
#include "export/dialog_logic.h"
#include "messages/tell.h"
#include "run/export.h"

namespace cli {

namespace {

bool SetPathField(std::string& field, const std::optional<std::string>& flag, bool isFolder,
                  const char* name) {
    if (!flag) {
        return true;
    }
    const std::optional<std::string> path = isFolder ? FolderOption(*flag) : OptionPath(*flag);
    if (!path) {
        Tell(nullptr, eMessageId::OptionsForeignCharacter, {}, name);
        return false;
    }
    field = *path;
    return true;
}

void SetFlagField(bool& field, const std::optional<bool>& flag) {
    field = flag.value_or(field);
}

// As the dialog's spinner does, but told.
void SetStaticFrame(const Export& run, eDialogFields& fields, int frame) {
    fields.staticFrame = std::max(run.frameStart, std::min(frame, run.frameEnd));
    if (fields.staticFrame != frame) {
        Tell(nullptr, eMessageId::OptionsFrameMoved, {}, frame, run.frameStart, run.frameEnd,
             fields.staticFrame);
    }
}

}  // namespace

bool ApplyFlags(Export& run, const eExportFlags& flags) {
    eDialogFields fields = ShowDialogFields(run);
    SetFlagField(fields.exportMesh, flags.mesh);
    SetFlagField(fields.exportAnimation, flags.animation);
    SetFlagField(fields.exportGeometry, flags.geometry);
    SetFlagField(fields.exportIK, flags.ik);
    SetFlagField(fields.exportLightsCameras, flags.lightsCameras);
    SetFlagField(fields.selectedOnly, flags.animateSelected);
    SetFlagField(fields.currentRangeOnly, flags.animateCurrentRange);
    SetFlagField(fields.reverseAnimation, flags.animateReverse);
    if (flags.staticFrame) {
        SetStaticFrame(run, fields, *flags.staticFrame);
    }
    return SetPathField(fields.resourceRoot, flags.resourceRoot, true, "--resource-root") &&
           SetPathField(fields.commonTextureSource, flags.commonSource, true, "--common-source") &&
           SetPathField(fields.commonTextureTarget, flags.commonTarget, false, "--common-target") &&
           TakeDialogFields(run, fields, nullptr);
}

}  // namespace cli
