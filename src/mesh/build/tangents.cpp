#include "mesh/build/tangents.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "material/queries/material_queries.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/export_bone.h"

namespace {

using host::Point3;
using host::Point4;

struct eBasis {
    Point3 tangent;
    Point3 bitangent;
};

bool IsFinite(const Point3& p) {
    return std::isfinite(host::DotProd(p, p));
}

// The directions in which u and v grow over a face (Lengyel, "Computing Tangent Space Basis Vectors for an
// Arbitrary Mesh", 2001). Nothing if the face has no area in map space, or so little that a direction is
// beyond the range of numbers.
std::optional<eBasis> BasisOf(const eExportFace& face, const eExportMeshFrame& frame, std::size_t index) {
    const eCorners<host::Point2>& uv = frame.mapCoords0[index];
    const Point3& p0 = frame.positions[face.v[0]];
    const Point3 e1 = frame.positions[face.v[1]] - p0;
    const Point3 e2 = frame.positions[face.v[2]] - p0;
    const float du1 = uv[1].x - uv[0].x;
    const float du2 = uv[2].x - uv[0].x;
    const float dv1 = uv[1].y - uv[0].y;
    const float dv2 = uv[2].y - uv[0].y;
    const float r = 1 / (dv2 * du1 - dv1 * du2);
    const eBasis basis{r * (dv2 * e1 - dv1 * e2), r * (du1 * e2 - du2 * e1)};
    return IsFinite(basis.tangent) && IsFinite(basis.bitangent) ? std::optional(basis) : std::nullopt;
}

Point4 TangentAt(const Point3& normal, const eBasis& basis) {
    const Point3& t = basis.tangent;
    const Point3 xyz = host::Normalize(t - normal * host::DotProd(normal, t));
    const bool isLeft = host::DotProd(host::CrossProd(normal, t), basis.bitangent) < 0;
    return {xyz.x, xyz.y, xyz.z, isLeft ? -1.0F : 1.0F};
}

// Any unit vector at right angles to the normal: from the axis that lies farthest from it.
Point4 AnyTangentAt(const Point3& normal) {
    Point3 axis;
    const Point3 size{std::fabs(normal.x), std::fabs(normal.y), std::fabs(normal.z)};
    axis[size.x <= size.y && size.x <= size.z ? 0 : size.y <= size.z ? 1 : 2] = 1;
    const Point3 xyz = host::Normalize(axis - normal * host::DotProd(normal, axis));
    return {xyz.x, xyz.y, xyz.z, 1};
}

std::vector<bool> MaterialsWithBump(const eExportMesh& mesh) {
    std::vector<bool> bumped;
    for (const auto& [leaf, id] : mesh.materials) {
        bumped.push_back(leaf != nullptr && GetBumpAmount(leaf) != 0);
    }
    return bumped;
}

enum class eFrameResult { Complete, FlatFaces, MissingCoordinates };

eFrameResult ComputeFrame(const eExportMesh& mesh, const std::vector<bool>& bumped, eExportMeshFrame& frame) {
    eFrameResult result = eFrameResult::Complete;
    frame.tangents.assign(mesh.faces.size(), {});
    for (std::size_t i = mesh.faces.size(); i-- > 0;) {
        if (!bumped[mesh.faces[i].material]) {
            continue;
        }
        if (i >= frame.mapCoords0.size() || i >= frame.cornerNormals.size()) {
            return eFrameResult::MissingCoordinates;
        }
        const std::optional<eBasis> basis = BasisOf(mesh.faces[i], frame, i);
        result = basis ? result : eFrameResult::FlatFaces;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const Point3& normal = frame.cornerNormals[i][corner];
            frame.tangents[i][corner] = basis ? TangentAt(normal, *basis) : AnyTangentAt(normal);
        }
    }
    return result;
}

}  // namespace

void ComputeTangents(Export& run, eExportBone& bone) {
    eExportMesh& mesh = bone.mesh;
    const std::vector<bool> bumped = MaterialsWithBump(mesh);
    if (std::find(bumped.begin(), bumped.end(), true) == bumped.end()) {
        return;
    }
    bool hasFlatFaces = false;
    for (std::size_t frame = bone.commonMesh ? mesh.frames.size() : 1; frame-- > 0;) {
        if (mesh.frames[frame].cornerNormals.empty()) {
            continue;
        }
        const eFrameResult result = ComputeFrame(mesh, bumped, mesh.frames[frame]);
        if (result == eFrameResult::MissingCoordinates) {
            ShowAs(MakeMessage(eMessageId::TangentsNoCoordinates, {.node = host::PathOf(*bone.node)}),
                   {.title = "Error", .icon = platform::eBoxIcon::Stop});
            break;
        }
        hasFlatFaces |= result == eFrameResult::FlatFaces;
    }
    if (hasFlatFaces) {
        TellOfNode(run, eMessageId::TangentsNoArea, *bone.node);
    }
}
