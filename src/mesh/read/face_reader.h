#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/bilingual.h"
#include "host/mesh.h"
#include "mesh/read/corner_color.h"
#include "mesh/read/face_material.h"
#include "mesh/read/map_coords.h"
#include "mesh/read/node_reading.h"
#include "mesh/read/vertex_skin.h"

// Appends the visible faces of one mesh to the face soup of its bone.
class eFaceReader {
public:
    // `base` is the number that the mesh's vertex 0 has in the bone's frame. All must outlive the object.
    eFaceReader(const eNodeReading& reading, const eReadingSpace& space, const host::Mesh& mesh,
                bool hasVertexAlpha, std::size_t base);

    void ReadFaces();

private:
    void Reserve();
    void ReadFace(int index);
    void StoreFace(const host::Face& face, const eFaceMaterial& material);
    void StoreSkin(const std::uint32_t (&vertices)[3]);
    // Of unit length, in the bone's space. A corner without a direction of its own takes the face's.
    host::Point3 FaceNormal(int index) const;
    eCorners<host::Point3> CornerNormals(int index, const host::Point3& faceNormal) const;
    host::Point3 CornerNormal(int index, int corner, const host::Point3& faceNormal) const;
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
    std::vector<host::Point3> artistNormals;  // of unit length, in the bone's space; zero without direction
    std::optional<eFaceSkinReader> skin;
};
