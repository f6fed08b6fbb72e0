#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/material.h"
#include "host/mesh.h"
#include "mesh/read/map_coords.h"

class Export;

// Which maps of a leaf material give the corners of a face their coordinates and their blend.
struct eFaceMaps {
    const host::Texmap* first = nullptr;   // coordinates of the first set
    const host::Texmap* second = nullptr;  // coordinates of the second set
    host::Texmap* blend = nullptr;         // evaluated for alpha alone
    bool vertexBlended = false;            // the blend is the red of the vertex colours
};

eFaceMaps ChooseFaceMaps(host::Mtl* leaf);

// What a material id of one mesh means for its faces.
struct eFaceMaterial {
    host::Mtl* leaf;  // may be null
    eFaceMaps maps;
    eFaceMapCoords first;
    eFaceMapCoords second;
    eFaceMapCoords blend;                        // without the map's transform
    float opacity;                               // of the leaf, 1 without
    std::uint32_t plainColor;                    // white with that alpha
    std::uint32_t number;                        // in the order in which they were first asked for
    std::vector<const host::Texmap*> worldMaps;  // with coordinates that the export can't take
    int faces = 0;                               // that have asked for it so far
};

// The materials of one mesh by the id of its faces, each asked of the host once.
class eFaceMaterials {
public:
    // `material` is the node's, may be null; `mesh` must outlive the object.
    eFaceMaterials(Export& run, host::Mtl* material, const host::Mesh& mesh)
        : run_(run), material_(material), mesh_(mesh) {}

    // Asked once for each face: the faces are counted.
    const eFaceMaterial& Of(const host::Face& face) {
        if (last_ == nullptr || lastId_ != face.getMatID()) {
            last_ = &EntryOf(face);
            lastId_ = face.getMatID();
        }
        ++last_->faces;
        return *last_;
    }

    // Warns of maps with coordinates that the export can't take, each once with the number of its faces.
    // `node` is the one whose faces they are.
    void TellWorldMaps(const host::INode& node) const;

private:
    eFaceMaterial& EntryOf(const host::Face& face);

    Export& run_;
    host::Mtl* material_;
    const host::Mesh& mesh_;
    std::vector<std::unique_ptr<eFaceMaterial>> byId_;
    std::uint32_t count_ = 0;
    eFaceMaterial* last_ = nullptr;  // that of the face before, and its id
    std::uint16_t lastId_ = 0;
};
