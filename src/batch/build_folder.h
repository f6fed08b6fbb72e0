// Where a batch keeps what it knows of its scenes between two calls.
//
//   build.ninja            the work, written anew by each call
//   summary.json           what came of the last call
//   NAME/models.json       which models a scene has, where NAME stands for the scene
//   NAME/report.json       the report of its last export
//   NAME/manifest.json     what that has written and from what, where manifests are wanted
//   NAME/*.log             what each of the two steps has printed
//   NAME/*.sources         what each hangs on
//   NAME/report.done       how an export has ended that the build does not know of yet
//   slurm/                 what a farm works on (farm_folder.h)
#pragma once

#include <string>

namespace batch {

struct eStepFiles {
    std::string result;
    std::string log;
    std::string sources;
};

struct eSceneFiles {
    eStepFiles models;
    eStepFiles exports;
    std::string manifest;
    std::string done;
};

// The files of a scene in the build folder. NAME is the scene's file name and a number made of its whole
// path, the same in every call (64 bits, FNV-1a).
eSceneFiles FilesOf(const std::string& buildFolder, const std::string& scene);

}  // namespace batch
