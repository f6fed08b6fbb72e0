// The work of a batch as a file for ninja, which knows what is out of date and shares the work among the
// cores.
#pragma once

#include <string>
#include <vector>

#include "batch/scene_list.h"

namespace batch {

struct eBuildWork {
    std::string program;             // zyrexport itself
    std::string folder;              // where its flags were typed; absolute, like all paths here
    std::string buildFolder;         // build_folder.h
    std::vector<std::string> flags;  // of `zyrexport export`, for all scenes
    std::vector<eBatchScene> scenes;
    bool keepsManifests = false;
};

// Targets: "models" finds which models the scenes have, "exports" exports them. A scene that has errors to
// mend is done as long as it stays as it is: its report tells them. Paths are those of build_folder.h, below
// the folder in which ninja runs. Needs a POSIX shell.
std::string BuildFileText(const eBuildWork& work);

// The export of one scene as a command of the shell, which writes its exit status into the scene's file
// "done"; none if something has killed it, which says nothing of the scene.
std::string ExportText(const eBuildWork& work, const eBatchScene& scene);

}  // namespace batch
