#pragma once

#include <optional>
#include <span>

#include "geometry/export_mesh.h"
#include "host/material.h"
#include "host/mesh.h"

// The bounds of a mesh in object space, for coordinates that come from nowhere else. Worked out at the first
// question.
class eObjectBox {
public:
    explicit eObjectBox(const host::Mesh& mesh) : mesh_(mesh) {}

    // 0 to 1 from the lower to the upper corner; a side below 0.0001 counts as 0.0001.
    host::Point3 Relative(const host::Point3& p);

private:
    const host::Mesh& mesh_;
    std::optional<host::Point3> lower_;
    host::Point3 size_;
};

// Reads the coordinates that a texture map has on the faces of one mesh: from the channel that the map asks
// for or, where there is none, from the object's box. Made once per mesh and map, as the host's answers cost
// more than a face does.
class eFaceMapCoords {
public:
    // Without a map the coordinates are (0, 1, 0). `useTransform`: with the map's tiling, offset and angle.
    eFaceMapCoords(const host::Mesh& mesh, const host::Texmap* map, bool useTransform);

    bool HasMap() const { return hasMap_; }

    // u, 1 - v, w of the three corners in the host's order; with `mirrored` in the reverse order. v is turned
    // over because textures in files run from the top down.
    eCorners<host::Point3> Of(std::size_t face, bool mirrored, eObjectBox& box) const;
    // The same without w.
    eCorners<host::Point2> FlatOf(std::size_t face, bool mirrored, eObjectBox& box) const {
        if (!hasMap_) {
            return {{{0, 1}, {0, 1}, {0, 1}}};
        }
        return OfMap(face, mirrored, box);
    }

private:
    eCorners<host::Point2> OfMap(std::size_t face, bool mirrored, eObjectBox& box) const;
    // Of one corner in the host's order, with v turned over.
    host::Point3 At(std::size_t face, std::size_t corner, eObjectBox& box) const;

    const host::Mesh& mesh_;
    bool hasMap_;
    std::span<const host::Point3> channelVerts_;
    std::span<const host::TVFace> channelFaces_;
    bool hasChannel_ = false;
    host::Matrix3 transform_;
};
