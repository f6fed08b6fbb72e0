#pragma once

#include <cstdint>
#include <optional>

#include "base/bilingual.h"
#include "host/mesh.h"
#include "mesh/read/corner_color.h"
#include "mesh/read/corner_normal.h"
#include "mesh/read/face_material.h"
#include "mesh/read/map_coords.h"
#include "mesh/read/node_reading.h"
#include "mesh/read/vertex_skin.h"

// Appends the visible faces of one mesh to the face soup of its bone.
class eFaceReader {
public:
    // `base` is the number that the mesh's vertex 0 has in the bone's frame. All must outlive the object.
    eFaceReader(const eNodeReading& reading, const eReadingSpace& space, host::Mesh& mesh,
                bool hasVertexAlpha, std::size_t base);

    void ReadFaces();

private:
    void Reserve();
    void ReadFace(std::size_t index);
    void StoreFace(const host::Face& face, const eFaceMaterial& material);
    void ReadSkin();
    void TellBonesOutsideTable() const;
    eBilingual NamesOfLeftOutBones() const;

    const eNodeReading& reading;
    const eReadingSpace& space;
    const host::Mesh& mesh;
    std::uint32_t base;
    eExportMeshFrame& frame;
    eFaceMaterials materials;
    eObjectBox box;
    eCornerColors colors;
    eCornerNormals normals;
    std::optional<eVertexSkinReader> skin;
    std::uint32_t firstMaterial;  // the place of the mesh's first material among those of the bone
};
