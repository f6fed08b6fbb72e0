#pragma once

#include <memory>
#include <vector>

#include "host/shade.h"
#include "scene/scene_lights.h"

// The shade context of the export: outside a render the host has nothing to answer the questions of its own
// materials, maps and lights with, so this one answers from a few fields and constants. One space serves for
// all: points and vectors pass between spaces unchanged.
class SContext : public host::ShadeContext {
public:
    host::TimeValue time = 0;
    host::Point3 point;
    host::Point3 boxPoint;  // inside the object box of -1 to 1
    host::DPoint2 uv;       // single precision for those who ask by UVW
    host::Point2 duv;
    host::Point3 normal;
    int screen[2] = {0, 0};
    host::INode* node = nullptr;
    int face = 0;

    // `lights` is not owned and must outlive the context.
    explicit SContext(const eSceneLights& lights);

    host::ClassId ClassID() const override { return {0, 0}; }
    host::LightDesc* Light(int index) override { return (*lights_)[static_cast<std::size_t>(index)].get(); }
    host::TimeValue CurTime() const override { return time; }
    host::INode* Node() const override { return node; }
    int NodeID() const override { return -1; }
    int FaceNumber() const override { return face; }
    int ProjType() const override { return 1; }
    bool InMtlEditor() const override { return false; }
    bool Antialias() const override { return false; }

    host::Point3 Normal() const override { return normal; }
    host::Point3 OrigNormal() const override { return normal; }
    host::Point3 GNormal() const override { return {}; }
    void SetNormal(const host::Point3&) override {}
    host::Point3 ReflectVector() const override { return {}; }
    host::Point3 RefractVector(float) const override { return {}; }
    float GetIOR() const override { return 1.0F; }
    float Curve() const override { return 0; }
    float RayDiam() const override { return 0; }
    float RayConeAngle() const override { return 0; }
    float CamNearRange() const override { return 0; }
    float CamFarRange() const override { return 0; }
    host::Point3 CamPos() const override { return {}; }
    host::Point3 V() const override { return boxPoint; }
    host::Point3 OrigView() const override { return boxPoint; }
    void SetView(const host::Point3& view) override { boxPoint = view; }

    host::Point3 P() const override { return point; }
    host::Point3 DP() const override { return {}; }
    host::Point3 PObj() const override { return point; }
    host::Point3 DPObj() const override { return {}; }
    host::Point3 PObjRelBox() const override { return boxPoint; }
    host::Point3 DPObjRelBox() const override { return {}; }
    host::Point3 BarycentricCoords() const override { return point; }
    host::Box3 ObjectBox() const override { return {{-1, -1, -1}, {1, 1, 1}}; }

    void ScreenUV(host::Point2& uv_, host::Point2& duv_) const override {
        uv_ = {static_cast<float>(uv.x), static_cast<float>(uv.y)};
        duv_ = duv;
    }
    void ScreenCoord(int& x, int& y) const override {
        x = screen[0];
        y = screen[1];
    }
    host::Point3 UVW(int) const override { return {static_cast<float>(uv.x), static_cast<float>(uv.y), 0}; }
    host::DPoint2 ExactUV(int) const override { return uv; }
    host::Point3 DUVW(int) const override { return {duv.x, duv.y, 0}; }
    host::Point3 UVWNormal(int) const override { return {0, 0, 1}; }

    host::Point3 PointTo(const host::Point3& p) const override { return p; }
    host::Point3 PointFrom(const host::Point3& p) const override { return p; }
    host::Point3 VectorTo(const host::Point3& v) const override { return v; }
    host::Point3 VectorFrom(const host::Point3& v) const override { return v; }

private:
    const eSceneLights* lights_;
};
