#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/flags/scene_flags.h"
#include "run/run_flags.h"

class Export;

namespace cli {

// What the user asked of `zyrexport export`. Texts are UTF-8; what is not set keeps its stored value.
struct eExportFlags {
    std::string scene;
    std::optional<std::string> resourceRoot;
    std::optional<std::string> commonSource;
    std::optional<std::string> commonTarget;
    std::optional<bool> mesh;
    std::optional<bool> animation;
    std::optional<bool> geometry;
    std::optional<bool> ik;
    std::optional<bool> lightsCameras;
    std::optional<bool> animateSelected;
    std::optional<bool> animateCurrentRange;
    std::optional<bool> animateReverse;
    std::optional<int> staticFrame;
    bool exportSelected = false;
    bool silent = false;
    bool keepOptions = false;  // what the other flags say counts for this run alone
    bool noFence = false;
    int longestWait = longestLockWait;
    bool quiet = false;
    bool verbose = false;
    std::string plugin;  // module whose exporter runs instead of the program's own
    std::string config;
    std::vector<std::string> drives;  // X=DIR
    eSceneFlags sceneFlags;
    std::string report;
    std::string depfile;
    std::string manifest;
    std::string sources;
};

// Sets the dialog's fields from the flags and presses its button: the same checks and messages as in the
// dialog. False if a field was refused; the user has been told.
bool ApplyFlags(Export& run, const eExportFlags& flags);

}  // namespace cli
