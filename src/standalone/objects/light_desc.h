#pragma once

#include "host/node.h"
#include "host/shade.h"
#include "standalone/scene_data.h"

namespace standalone {

// A light placed at a node, as it was at the latest Update. Without shadows.
class eLightDesc : public host::LightDesc {
public:
    // Node and record must outlive the light.
    eLightDesc(host::INode& lightNode, const eLightObject& light, host::ExclList listedNodes)
        : node(lightNode), data(light), listed(std::move(listedNodes)) {}

    host::INode& Node() const override { return node; }
    const host::ExclList& GetExclList() const override { return listed; }
    bool AffectsDiffuse() const override { return data.affectDiffuse; }
    bool AffectsSpecular() const override { return data.affectSpecular; }
    bool IsAmbientOnly() const override { return data.ambientOnly || data.kind == eLightKind::Ambient; }

    void Update(host::TimeValue t, const host::RendContext& context, bool shadowGeometryChanged,
                bool shadowsChanged) override;
    void UpdateViewDepParams(const host::Matrix3& worldToView) override;

    // The direction of an ambient light is the normal, its product and coefficient are 1.
    bool Illuminate(host::ShadeContext& context, const host::Point3& normal, host::Color& color,
                    host::Point3& direction, float& dot, float& diffuseCoef) override;

private:
    // What the distance, and for a spot the angle to its axis, leave of the light: 0 to 1.
    float Reach(float distance) const;
    float Cone(const host::Point3& directionToLight) const;

    host::INode& node;
    const eLightObject& data;
    host::ExclList listed;
    host::Matrix3 world;     // of the node
    host::Point3 place;      // in view space
    host::Point3 backwards;  // in view space, unit length: against the way a spot or directional light shines
};

}  // namespace standalone
