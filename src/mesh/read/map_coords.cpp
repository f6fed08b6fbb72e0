#include "mesh/read/map_coords.h"

#include <cmath>
#include <utility>

namespace {

constexpr float kSmallestSide = 0.0001F;

// The channel that a map takes its coordinates from; nothing where the host can't give them as a channel.
std::optional<int> ChannelOf(const host::Texmap& map) {
    switch (map.GetUVWSource()) {
        case host::Texmap::kExplicit: {
            const int channel = map.GetMapChannel();
            return channel == -1 ? std::nullopt : std::optional(channel);
        }
        case host::Texmap::kVertexColor:
            return host::Mesh::kVertexColorChannel;
        default:
            return std::nullopt;
    }
}

}  // namespace

host::Point3 eObjectBox::Relative(const host::Point3& p) {
    if (!lower_) {
        const host::Box3 box = host::BoundsOf(mesh_);
        lower_ = box.pmin;
        size_ = box.Width();
        for (int i = 0; i < 3; ++i) {
            size_[i] = std::fabs(size_[i]) < kSmallestSide ? kSmallestSide : size_[i];
        }
    }
    const host::Point3 fromLower = p - *lower_;
    return {fromLower.x / size_.x, fromLower.y / size_.y, fromLower.z / size_.z};
}

eFaceMapCoords::eFaceMapCoords(const host::Mesh& mesh, const host::Texmap* map, bool useTransform)
    : mesh_(mesh), hasMap_(map != nullptr) {
    if (map == nullptr) {
        return;
    }
    if (useTransform) {
        transform_ = map->GetUVTransform();
    }
    const std::optional<int> channel = ChannelOf(*map);
    if (channel && mesh.mapSupport(*channel)) {
        hasChannel_ = true;
        channelVerts_ = mesh.mapVerts(*channel);
        channelFaces_ = mesh.mapFaces(*channel);
    }
}

inline host::Point3 eFaceMapCoords::At(std::size_t face, std::size_t corner, eObjectBox& box) const {
    const host::Point3 coordinates = hasChannel_ ? channelVerts_[channelFaces_[face].t[corner]]
                                                 : box.Relative(mesh_.verts[mesh_.faces[face].v[corner]]);
    const host::Point3 placed = coordinates * transform_;
    return {placed.x, 1 - placed.y, placed.z};
}

eCorners<host::Point3> eFaceMapCoords::Of(std::size_t face, bool mirrored, eObjectBox& box) const {
    if (!hasMap_) {
        return {{{0, 1, 0}, {0, 1, 0}, {0, 1, 0}}};
    }
    eCorners<host::Point3> corners{At(face, 0, box), At(face, 1, box), At(face, 2, box)};
    if (mirrored) {
        std::swap(corners[0], corners[2]);
    }
    return corners;
}

eCorners<host::Point2> eFaceMapCoords::OfMap(std::size_t face, bool mirrored, eObjectBox& box) const {
    eCorners<host::Point2> corners;
    for (std::size_t corner = 0; corner < 3; ++corner) {
        const host::Point3 at = At(face, corner, box);
        corners[mirrored ? 2 - corner : corner] = {at.x, at.y};
    }
    return corners;
}
