#pragma once

#include <map>
#include <set>
#include <string>

#include "io/name.h"
#include "mesh/file/mesh_reader.h"
#include "verify/verified_scene.h"
#include "written/written_file.h"

namespace verify {

// The mesh files of a resource tree, each read once.
class eWrittenMeshes {
public:
    // The next mesh of that name in the folder's file that nobody has taken; null if there is none. Lives as
    // long as this object.
    const eFileMesh* Take(const eName& folder, const std::string& name);
    // True if the folder's file has a mesh of that name, taken or not.
    bool Has(const eName& folder, const std::string& name);
    // Why the folder's file can't be read; empty if it can.
    const std::string& ProblemOf(const eName& folder) { return FileIn(folder).problem; }
    // The meshes of the folder's file that nobody has taken, by name.
    std::vector<std::string> NotTaken(const eName& folder);

private:
    struct eFile {
        platform::eFileContent bytes;
        eMeshFileContent content;
        std::set<std::size_t> taken;
        std::string problem;
    };
    eFile& FileIn(const eName& folder);

    std::map<eName, eFile> files_;
};

}  // namespace verify
