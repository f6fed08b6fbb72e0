#pragma once

#include <memory>
#include <vector>

#include "host/shade.h"
#include "material/queries/shade_context.h"
#include "verify/verified_scene.h"

namespace verify {

// The light that an export bakes into the colours of meshes. Lights count from the model on by which they
// were met, and as often as they were met.
class eBakedLight {
public:
    explicit eBakedLight(const eVerifiedScene& scene);

    // One more walk over nodes with lights.
    void Meet(const std::vector<host::INode*>& nodes);
    // What is asked from here on is about the mesh of that node. True if a light counts for it.
    bool PointAt(const host::INode& owner, host::TimeValue time);

    // The light at a vertex, both in object space; white where none counts.
    host::Color At(const host::Point3& position, const host::Point3& normal);

private:
    const eVerifiedScene& scene_;
    host::Color ambient_;
    eSceneLights lights_;
    std::vector<host::LightDesc*> counting_;
    SContext context_;
};

}  // namespace verify
