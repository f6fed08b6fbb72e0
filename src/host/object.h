#pragma once

#include <vector>

#include "host/mesh.h"
#include "host/scene_element.h"
#include "host/values.h"

namespace host {

class INode;
class LightDesc;

// The lines of a shape, in object space.
struct PolyLine {
    std::vector<Point3> points;
    bool closed = false;
};

struct PolyShape {
    std::vector<PolyLine> lines;
};

// What a node shows: geometry, a shape, a camera, a light, a helper.
class Object : public ReferenceTarget {
public:
    virtual bool CanConvertToType(const ClassId&) const { return false; }
    // The object as the asked class at the time, or null. An object other than this one is the caller's to
    // delete.
    virtual Object* ConvertToType(TimeValue, const ClassId&) { return nullptr; }

    // The bounds at the time, in object space; all zero without points.
    virtual Box3 GetDeformBBox(TimeValue) const { return {{0, 0, 0}, {0, 0, 0}}; }

    // The lines of a shape; none for any other object. `steps` is the number of points between two knots, -2
    // for the shape's own setting.
    virtual PolyShape MakePolyShape(TimeValue, int /*steps*/, bool /*optimize*/) const { return {}; }
};

// The triangle object, class kTriObjectClass: what convertible geometry becomes.
class TriObject : public Object {
public:
    virtual Mesh& GetMesh() = 0;
};

// The weights of one node's vertices: which bones of the skin's list move a vertex, and how much. Assignments
// of a vertex have no order.
class ISkinContextData {
public:
    virtual ~ISkinContextData() = default;
    virtual int GetNumAssignedBones(int vertex) const = 0;
    virtual int GetAssignedBone(int vertex, int assignment) const = 0;
    virtual float GetBoneWeight(int vertex, int assignment) const = 0;
};

class ISkin {
public:
    virtual ~ISkin() = default;
    virtual int GetNumBones() const = 0;
    virtual INode* GetBone(int bone) const = 0;
    // The weights of the node's own vertices; null for a node that the modifier does not act on.
    virtual const ISkinContextData* GetContextInterface(const INode& node) const = 0;
};

class Modifier : public ReferenceTarget {
public:
    // Bit 5 of the flag word switches the modifier off.
    static constexpr std::uint32_t kDisabledFlag = 0x20;
    static constexpr std::uint32_t kSkinInterface = 0x10000;

    // The interface of that number, or null.
    virtual ISkin* GetInterface(std::uint32_t /*id*/) { return nullptr; }
};

// An object with a stack of modifiers above another object; super class kDerivedObjectSuperClass. Modifier 0
// is the top of the stack.
class IDerivedObject : public Object {
public:
    virtual int NumModifiers() const = 0;
    virtual Modifier* GetModifier(int index) const = 0;
    virtual Object* GetObjRef() const = 0;
};

struct CameraState {
    float fov = 0;             // horizontal, radians
    float targetDistance = 0;  // scene units
};

class CameraObject : public Object {
public:
    virtual void UpdateTargDistance(TimeValue, INode&) {}
    virtual CameraState EvalCameraState(TimeValue) const = 0;
};

enum class LightType { Omni = 0, Spot = 1, Directional = 2, Ambient = 3 };

struct LightState {
    int type = 0;  // a LightType, or another number of the host
    Color color;   // without the multiplier
    bool on = true;
    float hotsize = 0;   // degrees, full angle
    float fallsize = 0;  // degrees, full angle
    bool useAtten = false;
    float attenStart = 0;  // scene units
    float attenEnd = 0;    // scene units
};

class LightObject : public Object {
public:
    virtual LightState EvalLightState(TimeValue) const = 0;
    // The light as a renderer sees it, placed at the node; the caller owns it.
    virtual LightDesc* CreateLightDesc(INode& node) = 0;
};

}  // namespace host
