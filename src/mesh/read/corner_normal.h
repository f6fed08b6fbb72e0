#pragma once

#include <vector>

#include "geometry/export_mesh.h"
#include "host/mesh.h"
#include "mesh/read/node_reading.h"

// The normal of a face's corner as the mesh has built it, in object space, not always of unit length: that of
// the render vertex which serves the face's smoothing groups.
host::Point3 GetCornerNormal(const host::Mesh& mesh, std::size_t face, int corner);

// The normals of one mesh's corners in the bone's space, of unit length: the one set by the artist where it
// is marked explicit, else the built one. A corner without a direction of its own takes the face's.
class eCornerNormals {
public:
    // Builds those normals of the mesh that a corner needs: around vertices only where the artist has not set
    // all. Both must outlive the object.
    eCornerNormals(host::Mesh& mesh, const eReadingSpace& space);

    // In the order of the stored corners.
    eCorners<host::Point3> Of(std::size_t face) const { return areAllReady_ ? ReadyOf(face) : EachOf(face); }

private:
    void Build(host::Mesh& mesh) const;
    eCorners<host::Point3> ReadyOf(std::size_t face) const {
        const std::int32_t* const numbers = mesh_.GetSpecifiedNormals()->faceNormals.data() + 3 * face;
        const auto at = [&](int c) {
            return artistNormals_[static_cast<std::size_t>(numbers[space_.HostCorner(c)])];
        };
        return {at(0), at(1), at(2)};
    }
    eCorners<host::Point3> EachOf(std::size_t face) const;
    host::Point3 OfFace(std::size_t face) const;

    const host::Mesh& mesh_;
    const eReadingSpace& space_;
    std::vector<host::Point3> artistNormals_;  // in the bone's space; zero without direction
    bool areAllSet_;                           // by the artist
    bool areAllReady_;                         // set, and each has a direction
};
