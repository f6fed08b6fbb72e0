#pragma once

#include <span>

#include "geometry/export_mesh.h"
#include "host/mesh.h"
#include "mesh/read/face_material.h"
#include "mesh/read/map_coords.h"
#include "mesh/read/node_reading.h"
#include "mesh/read/vertex_light.h"

// 0xAARRGGBB. What is no number is 0.
std::uint32_t PackColor(const host::Color& color, float alpha);

// The colours of one mesh's corners, packed: vertex colour times baked light, and alpha from the material's
// blend map or from its opacity and the vertex alpha channel.
class eCornerColors {
public:
    // All must outlive the object. `hasVertexAlpha`: the mesh has the channel, and it has been checked.
    eCornerColors(const eNodeReading& reading, const eReadingSpace& space, const host::Mesh& mesh,
                  bool hasVertexAlpha);

    // `normals` are those stored for the face.
    eCorners<std::uint32_t> Of(std::size_t face, const eFaceMaterial& material,
                               const eCorners<host::Point3>& normals, eObjectBox& box) {
        if (isPlain && material.maps.blend == nullptr) {
            return {material.plainColor, material.plainColor, material.plainColor};
        }
        return EachOf(face, material, normals, box);
    }

private:
    // A corner of the mesh as the host numbers it.
    struct eHostCorner {
        std::size_t face;
        int corner;
    };

    eCorners<std::uint32_t> EachOf(std::size_t face, const eFaceMaterial& material,
                                   const eCorners<host::Point3>& normals, eObjectBox& box);
    host::Color VertexColor(const eHostCorner& at) const;
    host::Color Tint(const eHostCorner& at, const eFaceMaterial& material) const;
    float PlainAlpha(const eHostCorner& at, const eFaceMaterial& material) const;
    float MapBlend(const eFaceMaterial& material, const host::Point3& uvw) const;

    const eNodeReading& reading;
    const eReadingSpace& space;
    const host::Mesh& mesh;
    eVertexLight light;
    std::span<const host::Point3> colorVerts;  // empty without vertex colours
    std::span<const host::TVFace> colorFaces;
    std::span<const host::Point3> alphaVerts;  // empty without vertex alpha
    std::span<const host::TVFace> alphaFaces;
    bool isPlain;  // the mesh has neither and is not lit: only a blend map makes corners differ
};
