#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "standalone/scene_data.h"

// Scenes in a few lines of code:
//
//     support::eSceneBuilder scene;
//     const int iron = scene.Material("iron", standalone::eStandardMaterial{.shininess = 0.5F});
//     support::eNode tank = scene.Node("tank").Property("Model=units/tank");
//     tank.Object(standalone::eHelperObject{}).Key({.frame = 10, .position = host::Point3{1, 0, 0}});
//     support::eNode wheel = tank.Child("wheel_l").Property("Poly").Position(0, 90, 40).Material(iron);
//     wheel.Object(standalone::eCylinderObject{.radius = 40, .height = 20});
//     tank.Child("wheel_r").Property("Poly").Position(0, -90, 40).Material(iron).SameObject(wheel);
//     scene.Settings().unitMetres = 0.01;
//     standalone::eSceneData data = scene.Build();
//
// Texts are bytes in code page 1251 ("Башня"_ansi).
namespace support {

class eSceneBuilder;

// A node being built: a reference that may be copied. Every operation but Child gives the node itself back.
class eNode {
public:
    // A new node below this one, behind its present children.
    eNode Child(const std::string& name);

    // One more line of the user-defined property text.
    eNode& Property(const std::string& line);
    eNode& Hidden();
    eNode& Selected();
    eNode& NotRenderable();
    eNode& GroupHead();
    eNode& GroupMember();
    eNode& JointFlags(std::uint32_t flags);
    eNode& Visibility(float value);
    eNode& VisibilityKey(double frame, float value);

    eNode& Position(float x, float y, float z);
    // Right-handed about the axis, which need not have length 1.
    eNode& Rotation(const host::Point3& axis, float degrees);
    eNode& Scale(float x, float y, float z);
    eNode& Matrix(const host::Matrix3& matrix);
    eNode& Key(standalone::eTransformKey key);
    eNode& Offset(const standalone::ePlacement& offset);

    eNode& Object(standalone::eObjectKind kind);
    // Shows the very object of the other node: an instance.
    eNode& SameObject(const eNode& other);
    // One more modifier, below those that the object has already.
    eNode& Modifier(standalone::eModifierKind kind);
    // A skin modifier; per vertex the pairs of bone number (in `bones`) and weight.
    eNode& Skin(const std::vector<eNode>& bones,
                const std::vector<std::vector<standalone::eSkinWeight>>& weights);
    eNode& Material(int material);
    eNode& Target(const eNode& target);

    // The node's number in the builder: what eLightObject::listedNodes and the like hold before Build.
    int Number() const { return number; }

private:
    friend class eSceneBuilder;
    eNode(eSceneBuilder& builder, int nodeNumber) : scene(&builder), number(nodeNumber) {}

    standalone::eNodeData& Data() const;

    eSceneBuilder* scene;
    int number;
};

class eSceneBuilder {
public:
    // A new child of the scene root.
    eNode Node(const std::string& name);
    // The number of the new material, map, for the places that refer to it.
    int Material(const std::string& name, standalone::eMaterialKind kind);
    int Map(standalone::eMapKind kind, const standalone::eMapCoordinates& coordinates = {},
            const std::string& name = {});
    void SelectionSet(const std::string& name, const std::vector<eNode>& nodes);

    // Everything that belongs to the scene as a whole: file, units, range, ambient light.
    standalone::eSceneData& Settings() { return data; }

    // The scene with its nodes depth first, as loaders give it. Node numbers change by that.
    standalone::eSceneData Build() const;

private:
    friend class eNode;
    eNode Add(const std::string& name, int parent);

    standalone::eSceneData data;  // nodes in the order of their making
};

// The right-handed rotation about an axis.
standalone::eRotation RotationAbout(const host::Point3& axis, float degrees);

// A mesh without maps; all faces in smoothing group 1 with material id 0.
host::Mesh TriangleMesh(std::vector<host::Point3> vertices,
                        std::initializer_list<std::array<std::uint32_t, 3>> faces);

// Squares of size 1 in the x-y plane from the origin on, two triangles each, facing +z, with map channel 1
// running from 0 to 1 over the whole.
host::Mesh GridMesh(int columns, int rows);

}  // namespace support
