#pragma once

#include <vector>

#include "host/values.h"
#include "material/queries/shade_context.h"

class Export;

namespace host {
class INode;
}  // namespace host

// Hands the lights that count for the root of a mesh (by their exclusion lists) the matrix from world space
// to the space in which the mesh is lit. True if at least one counts.
bool PrepareLights(Export& run, const host::INode& root, const host::Matrix3& worldToMesh);

// The baked light of one mesh: the lights that count for its root, gathered once.
class eVertexLight {
public:
    // The run's lights must outlive the object.
    eVertexLight(Export& run, const host::INode& root, host::TimeValue time);

    bool AnyCounts() const { return !lights.empty(); }

    // The light at a position with a unit normal, both in the space of PrepareLights: white where no light
    // counts for the root, else the sum of what reaches the position, and the scene's ambient share.
    host::Color At(const host::Point3& position, const host::Point3& normal);

private:
    std::vector<host::LightDesc*> lights;
    host::Color ambient;
    SContext context;
};
