#pragma once

#include <vector>

#include "host/scene_element.h"
#include "host/values.h"

namespace host {

class INode;
class ShadeContext;

// Which nodes a light leaves out or, in include mode, the only ones that it lights.
struct ExclList {
    static constexpr std::uint32_t kInclude = 0x1;

    std::uint32_t flags = 0;
    std::vector<const INode*> nodes;

    bool IsInclude() const { return (flags & kInclude) != 0; }
    bool Holds(const INode& node) const {
        for (const INode* held : nodes) {
            if (held == &node) {
                return true;
            }
        }
        return false;
    }
    // True if the light counts for the node.
    bool Lights(const INode& node) const { return IsInclude() == Holds(node); }
};

// The setting of a render that lights are prepared for; its content is the host's.
struct RendContext {};

// A light of the scene as a renderer sees it.
class LightDesc {
public:
    virtual ~LightDesc() = default;

    virtual INode& Node() const = 0;
    virtual const ExclList& GetExclList() const = 0;
    virtual bool AffectsDiffuse() const = 0;
    virtual bool AffectsSpecular() const = 0;
    virtual bool IsAmbientOnly() const = 0;

    virtual void Update(TimeValue t, const RendContext& context, bool shadowGeometryChanged,
                        bool shadowsChanged) = 0;
    // Moves the light into the space that the matrix leads to from world space.
    virtual void UpdateViewDepParams(const Matrix3& worldToView) = 0;

    // What reaches the context's point (context.P(), in the space of UpdateViewDepParams). False if nothing
    // does; the direction leads to the light, `dot` is its product with the normal.
    virtual bool Illuminate(ShadeContext& context, const Point3& normal, Color& color, Point3& direction,
                            float& dot, float& diffuseCoef) = 0;
};

struct ShadeOutput {
    Color c;  // colour
    Color t;  // transparency
};

// The point being shaded, as materials, maps and lights ask for it. Operations that a context has no answer
// for give nothing or 0.
class ShadeContext {
public:
    virtual ~ShadeContext() = default;

    bool doMaps = true;
    bool filterMaps = true;
    bool shadow = false;
    int nLights = 0;
    int rayLevel = 0;
    Color ambientLight;
    ShadeOutput out;

    virtual ClassId ClassID() const = 0;
    virtual LightDesc* Light(int index) = 0;
    virtual TimeValue CurTime() const = 0;
    virtual INode* Node() const = 0;
    virtual int NodeID() const = 0;
    virtual int FaceNumber() const = 0;
    virtual int ProjType() const = 0;
    virtual bool InMtlEditor() const = 0;
    virtual bool Antialias() const = 0;

    virtual Point3 Normal() const = 0;
    virtual Point3 OrigNormal() const = 0;
    virtual Point3 GNormal() const = 0;
    virtual void SetNormal(const Point3& normal) = 0;
    virtual Point3 ReflectVector() const = 0;
    virtual Point3 RefractVector(float ior) const = 0;
    virtual float GetIOR() const = 0;
    virtual float Curve() const = 0;
    virtual float RayDiam() const = 0;
    virtual float RayConeAngle() const = 0;
    virtual float CamNearRange() const = 0;
    virtual float CamFarRange() const = 0;
    virtual Point3 CamPos() const = 0;
    virtual Point3 V() const = 0;
    virtual Point3 OrigView() const = 0;
    virtual void SetView(const Point3& view) = 0;

    virtual Point3 P() const = 0;
    virtual Point3 DP() const = 0;
    virtual Point3 PObj() const = 0;
    virtual Point3 DPObj() const = 0;
    virtual Point3 PObjRelBox() const = 0;
    virtual Point3 DPObjRelBox() const = 0;
    virtual Point3 BarycentricCoords() const = 0;
    virtual Box3 ObjectBox() const = 0;

    virtual void ScreenUV(Point2& uv, Point2& duv) const = 0;
    virtual void ScreenCoord(int& x, int& y) const = 0;
    virtual Point3 UVW(int channel) const = 0;
    // The first two of UVW, from a context that knows them better than single precision says.
    virtual DPoint2 ExactUV(int channel) const {
        const Point3 rounded = UVW(channel);
        return {rounded.x, rounded.y};
    }
    virtual Point3 DUVW(int channel) const = 0;
    virtual Point3 UVWNormal(int channel) const = 0;

    virtual Point3 PointTo(const Point3& p) const = 0;
    virtual Point3 PointFrom(const Point3& p) const = 0;
    virtual Point3 VectorTo(const Point3& v) const = 0;
    virtual Point3 VectorFrom(const Point3& v) const = 0;
};

}  // namespace host
