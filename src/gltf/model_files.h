#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/bilingual.h"
#include "mesh/file/mesh_reader.h"
#include "platform/file_layer.h"
#include "written/played_clip.h"
#include "written/written_file.h"
#include "written/written_model.h"

namespace gltf {

// An animation file of the model's folder.
struct eClipFile {
    std::string name;  // without extension, code page 1251
    platform::eFileContent bytes;
    written::ePlayedClip played;
};

// The meshes of a folder.
struct eMeshFile {
    platform::eFileContent bytes;
    eMeshFileContent content;
};

// All that the files of a model hold, read as the engine reads them.
struct eModelFiles {
    eName folder;
    std::string name;  // of the model, code page 1251
    written::eWrittenModel model;
    inspect::eSdlBlock entity;                           // empty without a .def
    std::map<eName, std::unique_ptr<eMeshFile>> meshes;  // by folder
    std::vector<eClipFile> clips;                        // by name
    std::vector<eBilingual> warnings;                    // UTF-8: what is named and not there

    // What a bone shows; null if its folder's file has no such mesh.
    const eFileMesh* MeshOf(const std::string& view) const;
};

// `place` is a folder with one .mdl, or the .mdl; a resource path. Nothing, with the reason in `problem`
// (UTF-8), where there is no model or one of its files is broken.
std::optional<eModelFiles> ReadModelFiles(const eName& place, eBilingual& problem);

}  // namespace gltf
