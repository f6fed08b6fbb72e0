#include "mesh/read/corner_normal.h"

#include <algorithm>
#include <functional>
#include <numeric>

#include "mesh/read/unit_normal.h"

namespace {

// Once for each normal, as many corners share it.
std::vector<host::Point3> ArtistNormals(const eReadingSpace& space, const host::Mesh& mesh) {
    std::vector<host::Point3> normals;
    if (const host::MeshNormalSpec* specified = mesh.GetSpecifiedNormals()) {
        normals.reserve(specified->normals.size());
        for (const host::Point3& normal : specified->normals) {
            normals.push_back(UnitNormal(VectorTransform(space.normalMatrix, normal), {}));
        }
    }
    return normals;
}

bool HasArtistNormals(const host::Mesh& mesh) {
    const host::MeshNormalSpec* specified = mesh.GetSpecifiedNormals();
    return specified != nullptr &&
           // Negative if any of them is.
           std::reduce(specified->faceNormals.begin(), specified->faceNormals.end(), 0, std::bit_or()) >= 0 &&
           std::ranges::all_of(specified->explicitNormals, std::identity());
}

// The number of the normal that the artist has set for the corner, or -1.
int ArtistNormal(const host::MeshNormalSpec& specified, std::size_t face, int corner, bool areAllSet) {
    const int number = specified.GetNormalIndex(static_cast<int>(face), corner);
    return areAllSet || (number >= 0 && specified.GetNormalExplicit(number)) ? number : -1;
}

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

}  // namespace

host::Point3 GetCornerNormal(const host::Mesh& mesh, std::size_t face, int corner) {
    return SmoothedNormal(mesh, face, mesh.renderVerts[mesh.faces[face].v[corner]]);
}

eCornerNormals::eCornerNormals(host::Mesh& mesh, const eReadingSpace& space)
    : mesh_(mesh),
      space_(space),
      artistNormals_(ArtistNormals(space, mesh)),
      areAllSet_(HasArtistNormals(mesh)),
      areAllReady_(areAllSet_ && std::ranges::find(artistNormals_, host::Point3{}) == artistNormals_.end()) {
    Build(mesh);
}

void eCornerNormals::Build(host::Mesh& mesh) const {
    if (!areAllSet_) {
        mesh.buildRenderNormals();
    } else if (!areAllReady_) {
        mesh.buildNormals();
    }
}

eCorners<host::Point3> eCornerNormals::EachOf(std::size_t face) const {
    const host::MeshNormalSpec* specified = mesh_.GetSpecifiedNormals();
    eCorners<host::Point3> normals;
    for (std::size_t c = 0; c < 3; ++c) {
        const int corner = space_.HostCorner(static_cast<int>(c));
        const int number = specified != nullptr ? ArtistNormal(*specified, face, corner, areAllSet_) : -1;
        const host::Point3 normal =
            number >= 0
                ? artistNormals_[static_cast<std::size_t>(number)]
                : UnitNormal(VectorTransform(space_.normalMatrix, GetCornerNormal(mesh_, face, corner)), {});
        normals[c] = normal != host::Point3{} ? normal : OfFace(face);
    }
    return normals;
}

// A face without area is seen by nobody; it is lit from above.
host::Point3 eCornerNormals::OfFace(std::size_t face) const {
    return UnitNormal(VectorTransform(space_.normalMatrix, mesh_.faceNormals[face]), {0, 0, 1});
}
