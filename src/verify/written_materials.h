#pragma once

#include <map>
#include <string>

#include "verify/verified_scene.h"
#include "verify/written_files.h"

namespace verify {

// A material of a written file: its pictures by key, as the file names them.
using eWrittenMaterial = std::map<std::string, std::string>;

// The material files of a resource tree, each read once.
class eWrittenMaterials {
public:
    struct eFile {
        std::map<std::string, eWrittenMaterial> materials;  // the first of a name
        bool isBroken = false;
    };

    explicit eWrittenMaterials(const eVerifiedScene& scene) : scene_(scene) {}

    // The file of a folder; empty where there is none.
    const eFile& In(const eName& folder);
    // The file of a picture that a material in the folder names; empty if there is none.
    eName PictureFile(const eName& folder, const std::string& picture) const;

private:
    const eVerifiedScene& scene_;
    std::map<eName, eFile> files_;
};

}  // namespace verify
