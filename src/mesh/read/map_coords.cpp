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

eCorners<host::Point3> eFaceMapCoords::Of(std::size_t face, bool mirrored, eObjectBox& box) const {
    eCorners<host::Point3> corners{};
    for (std::size_t corner = 0; hasMap_ && corner < 3; ++corner) {
        const host::Point3 coordinates = hasChannel_ ? channelVerts_[channelFaces_[face].t[corner]]
                                                     : box.Relative(mesh_.verts[mesh_.faces[face].v[corner]]);
        corners[corner] = coordinates * transform_;
    }
    if (mirrored) {
        std::swap(corners[0], corners[2]);
    }
    for (host::Point3& corner : corners) {
        corner.y = 1 - corner.y;
    }
    return corners;
}

eCorners<host::Point2> eFaceMapCoords::FlatOf(std::size_t face, bool mirrored, eObjectBox& box) const {
    if (!hasMap_) {
        return {{{0, 1}, {0, 1}, {0, 1}}};
    }
    const eCorners<host::Point3> corners = Of(face, mirrored, box);
    return {{{corners[0].x, corners[0].y}, {corners[1].x, corners[1].y}, {corners[2].x, corners[2].y}}};
}
