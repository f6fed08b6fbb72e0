#include "host/mesh.h"

#include <algorithm>

namespace host {

const MapChannel* Mesh::FindMap(int channel) const {
    const auto found = std::ranges::find(maps, channel, &MapChannel::channel);
    return found == maps.end() ? nullptr : &*found;
}

MapChannel* Mesh::FindMap(int channel) {
    const auto found = std::ranges::find(maps, channel, &MapChannel::channel);
    return found == maps.end() ? nullptr : &*found;
}

int Mesh::getNumMapVerts(int channel) const {
    return static_cast<int>(mapVerts(channel).size());
}

std::span<const Point3> Mesh::mapVerts(int channel) const {
    const MapChannel* map = FindMap(channel);
    return map != nullptr ? std::span<const Point3>(map->verts) : std::span<const Point3>();
}

std::span<const TVFace> Mesh::mapFaces(int channel) const {
    const MapChannel* map = FindMap(channel);
    return map != nullptr ? std::span<const TVFace>(map->faces) : std::span<const TVFace>();
}

void Mesh::buildNormals() {
    faceNormals.resize(faces.size());
    for (std::size_t i = 0; i < faces.size(); ++i) {
        const Face& face = faces[i];
        const Point3& p = verts[face.v[0]];
        faceNormals[i] = Normalize(CrossProd(verts[face.v[1]] - p, verts[face.v[2]] - p));
    }
}

namespace {

// The smoothed faces around each vertex, in face order: the faces of vertex v stand in `faces` from begin[v]
// up to begin[v + 1].
struct eFacesOfVertices {
    std::vector<std::uint32_t> begin;
    std::vector<std::uint32_t> faces;
};

eFacesOfVertices CollectSmoothedFaces(const Mesh& mesh) {
    eFacesOfVertices result;
    result.begin.assign(mesh.verts.size() + 1, 0);
    for (const Face& face : mesh.faces) {
        if (face.smGroup != 0) {
            for (const std::uint32_t v : face.v) {
                ++result.begin[v + 1];
            }
        }
    }
    for (std::size_t v = 0; v < mesh.verts.size(); ++v) {
        result.begin[v + 1] += result.begin[v];
    }
    result.faces.resize(result.begin.back());
    std::vector<std::uint32_t> next(result.begin.begin(), result.begin.end() - 1);
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        if (mesh.faces[i].smGroup != 0) {
            for (const std::uint32_t v : mesh.faces[i].v) {
                result.faces[next[v]++] = static_cast<std::uint32_t>(i);
            }
        }
    }
    return result;
}

// Adds one face to the normals gathered for a vertex; sets that the face's groups connect become one, at the
// place of the first of them.
void AddFace(std::vector<RNormal>& sets, const Point3& normal, std::uint32_t smGroup) {
    RNormal merged{normal, smGroup};
    auto home = sets.end();
    for (auto set = sets.begin(); set != sets.end();) {
        if ((set->smGroup & smGroup) == 0) {
            ++set;
            continue;
        }
        merged.normal += set->normal;
        merged.smGroup |= set->smGroup;
        if (home == sets.end()) {
            home = set++;
        } else {
            set = sets.erase(set);
        }
    }
    if (home == sets.end()) {
        sets.push_back(merged);
    } else {
        *home = merged;
    }
}

}  // namespace

void Mesh::buildRenderNormals() {
    buildNormals();
    const eFacesOfVertices around = CollectSmoothedFaces(*this);
    renderVerts.assign(verts.size(), {});
    renderNormals.clear();
    std::vector<RNormal> sets;
    for (std::size_t v = 0; v < verts.size(); ++v) {
        sets.clear();
        for (std::uint32_t i = around.begin[v]; i < around.begin[v + 1]; ++i) {
            const std::uint32_t face = around.faces[i];
            AddFace(sets, faceNormals[face], faces[face].smGroup);
        }
        RVertex& vertex = renderVerts[v];
        vertex.flags = static_cast<std::uint32_t>(sets.size());
        for (RNormal& set : sets) {
            set.normal = Normalize(set.normal);
        }
        if (sets.size() == 1) {
            vertex.normal = sets.front().normal;
        } else {
            vertex.firstNormal = static_cast<std::uint32_t>(renderNormals.size());
            renderNormals.insert(renderNormals.end(), sets.begin(), sets.end());
        }
    }
}

Box3 BoundsOf(const Mesh& mesh) {
    Box3 box;
    for (const Point3& p : mesh.verts) {
        box += p;
    }
    return box;
}

}  // namespace host
