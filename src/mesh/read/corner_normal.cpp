#include "mesh/read/corner_normal.h"

#include <algorithm>

namespace {

// With several normals the last one that shares a smoothing group counts; without any, which no built mesh
// has, the face's own.
host::Point3 SmoothedNormal(const host::Mesh& mesh, std::size_t face, const host::RVertex& vertex) {
    if ((vertex.flags & host::RVertex::kSpecifiedNormal) != 0) {
        return vertex.normal;
    }
    const std::uint32_t smoothing = mesh.faces[face].smGroup;
    const std::uint32_t count = vertex.NormalCount();
    if (count == 0 || smoothing == 0) {
        return mesh.faceNormals[face];
    }
    if (count == 1) {
        return vertex.normal;
    }
    host::Point3 normal = mesh.faceNormals[face];
    for (std::uint32_t i = vertex.firstNormal; i < vertex.firstNormal + count; ++i) {
        if ((mesh.renderNormals[i].smGroup & smoothing) != 0) {
            normal = mesh.renderNormals[i].normal;
        }
    }
    return normal;
}

bool HasArtistNormals(const host::Mesh& mesh) {
    const host::MeshNormalSpec* specified = mesh.GetSpecifiedNormals();
    return specified != nullptr && std::ranges::all_of(specified->faceNormals, [&](std::int32_t number) {
               return number >= 0 && specified->GetNormalExplicit(number);
           });
}

}  // namespace

int ArtistNormal(const host::Mesh& mesh, int face, int corner) {
    const host::MeshNormalSpec* specified = mesh.GetSpecifiedNormals();
    const int number = specified != nullptr ? specified->GetNormalIndex(face, corner) : -1;
    return number >= 0 && specified->GetNormalExplicit(number) ? number : -1;
}

void BuildCornerNormals(host::Mesh& mesh) {
    if (HasArtistNormals(mesh)) {
        mesh.buildNormals();
    } else {
        mesh.buildRenderNormals();
    }
}

host::Point3 GetCornerNormal(const host::Mesh& mesh, int face, int corner) {
    if (const int number = ArtistNormal(mesh, face, corner); number >= 0) {
        return mesh.specifiedNormals->normals[static_cast<std::size_t>(number)];
    }
    const auto faceIndex = static_cast<std::size_t>(face);
    const std::uint32_t vertex = mesh.faces[faceIndex].v[corner];
    return SmoothedNormal(mesh, faceIndex, mesh.renderVerts[vertex]);
}
