#pragma once

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "gltf/model_files.h"

namespace gltf {

// The shapes that a mesh takes where a clip moves its vertices: a shape for each frame in which a file stores
// vertices.
struct eMeshShapes {
    std::vector<std::vector<host::Point3>> shapes;  // by number, the position of each vertex
    // By clip and frame the number of the shape; between them the last one holds.
    std::map<std::pair<std::size_t, int>, std::size_t> numbers;
};

// The bones whose own meshes move by frames.
class eFrameShapes {
public:
    // What would make more than 256 shapes of a mesh stays still, and is warned of.
    explicit eFrameShapes(eModelFiles& files);

    // Null for a mesh that no clip changes.
    const eMeshShapes* Of(const eFileMesh& mesh) const;
    // The number of the bone whose vertices the mesh are; -1 for none.
    int OwnerOf(const eFileMesh& mesh) const;

private:
    void Play(std::size_t clip, const std::string& bone, std::size_t entry, eModelFiles& files);

    std::map<const eFileMesh*, eMeshShapes> meshes_;
    std::map<const eFileMesh*, int> owners_;
};

}  // namespace gltf
