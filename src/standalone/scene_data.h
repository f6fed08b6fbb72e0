#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/mesh.h"
#include "host/values.h"

namespace platform {
class eTemporaryFolder;
}  // namespace platform

// A scene as plain records: what loaders fill, the stand-alone host answers from, and the scene document is
// written from. Names that refer to nodes, objects, materials and maps have become indices into the flat
// lists of eSceneData, -1 for none; every index is valid. All texts are bytes in code page 1251, but for
// paths of temporary files, which are told apart by eBitmapMap::onDisk. Every member has an initialiser, so
// that a record can be written down with just the members that matter: eCircleObject{.radius = 2}.
namespace standalone {

// A rotation as the scene document writes it: right-handed, [0, 0, sin 45, cos 45] takes the x axis to the y
// axis. Of length 1.
struct eRotation {
    float x = 0;
    float y = 0;
    float z = 0;
    float w = 1;

    friend bool operator==(const eRotation&, const eRotation&) = default;
};

// Scale, then rotation, then translation.
struct ePlacement {
    host::Point3 position{};
    eRotation rotation{};
    host::Point3 scale{1, 1, 1};

    friend bool operator==(const ePlacement&, const ePlacement&) = default;
};

// Local to the parent; a matrix instead of the parts where the parts can't say it.
struct eTransform {
    ePlacement parts{};
    std::optional<host::Matrix3> matrix{};

    friend bool operator==(const eTransform&, const eTransform&) = default;
};

// One key of a node's track; a part that is not set is not keyed here. Keys are sorted by frame; of two keys
// at one frame the later in the list holds from that frame on.
struct eTransformKey {
    double frame = 0;
    std::optional<host::Point3> position{};
    std::optional<eRotation> rotation{};
    std::optional<host::Point3> scale{};

    friend bool operator==(const eTransformKey&, const eTransformKey&) = default;
};

struct eVisibilityKey {
    double frame = 0;
    float value = 1;

    friend bool operator==(const eVisibilityKey&, const eVisibilityKey&) = default;
};

struct eNodeData {
    std::string name{};
    std::string properties{};
    bool hidden = false;
    bool selected = false;
    bool renderable = true;
    bool groupHead = false;
    bool groupMember = false;
    std::uint32_t jointFlags = 0;                  // bits of the node's flag word
    float visibility = 1;                          // without keys
    std::vector<eVisibilityKey> visibilityKeys{};  // sorted by frame
    eTransform transform{};
    std::vector<eTransformKey> keys{};
    ePlacement offset{};  // of the object, before the node's matrix
    int object = -1;
    int material = -1;
    int target = -1;
    int parent = -1;  // -1 for a child of the scene root
    std::vector<int> children{};

    friend bool operator==(const eNodeData&, const eNodeData&) = default;
};

struct eHelperObject {
    friend bool operator==(const eHelperObject&, const eHelperObject&) = default;
};
struct eTargetObject {
    friend bool operator==(const eTargetObject&, const eTargetObject&) = default;
};

// Centred in x and y, z from 0 to height.
struct eBoxObject {
    float width = 0;   // x
    float length = 0;  // y
    float height = 0;  // z

    friend bool operator==(const eBoxObject&, const eBoxObject&) = default;
};

struct eSphereObject {
    float radius = 0;
    int segments = 32;

    friend bool operator==(const eSphereObject&, const eSphereObject&) = default;
};

struct eCylinderObject {
    float radius = 0;
    float height = 0;
    int sides = 18;

    friend bool operator==(const eCylinderObject&, const eCylinderObject&) = default;
};

// The positions of all vertices at a frame; they move linearly between keys.
struct eVertexKey {
    double frame = 0;
    std::vector<host::Point3> vertices{};

    friend bool operator==(const eVertexKey&, const eVertexKey&) = default;
};

struct eMeshObject {
    host::Mesh mesh{};                     // tables only; normals are built on evaluation
    std::vector<eVertexKey> vertexKeys{};  // sorted by frame, each as long as mesh.verts

    friend bool operator==(const eMeshObject&, const eMeshObject&) = default;
};

struct eRectangleObject {
    float width = 0;   // x
    float length = 0;  // y

    friend bool operator==(const eRectangleObject&, const eRectangleObject&) = default;
};

struct eCircleObject {
    float radius = 0;

    friend bool operator==(const eCircleObject&, const eCircleObject&) = default;
};

struct eSpline {
    std::vector<host::Point3> points{};
    bool closed = true;

    friend bool operator==(const eSpline&, const eSpline&) = default;
};

struct eLineObject {
    std::vector<eSpline> splines{};

    friend bool operator==(const eLineObject&, const eLineObject&) = default;
};

struct eCameraObject {
    float fov = 45;  // horizontal, degrees
    float targetDistance = 160;

    friend bool operator==(const eCameraObject&, const eCameraObject&) = default;
};

struct eAttenuation {
    float start = 0;
    float end = 0;

    friend bool operator==(const eAttenuation&, const eAttenuation&) = default;
};

enum class eLightKind { Omni = 0, Spot = 1, Directional = 2, Ambient = 3 };

struct eLightObject {
    eLightKind kind = eLightKind::Omni;
    bool on = true;
    host::Color color{1, 1, 1};
    float multiplier = 1;
    float hotspot = 43;  // degrees, full angle
    float falloff = 45;  // degrees, full angle
    std::optional<eAttenuation> attenuation{};
    bool include = false;  // `listed` are the only nodes lit, not those left out
    std::vector<int> listedNodes{};
    bool affectDiffuse = true;
    bool affectSpecular = true;
    bool ambientOnly = false;

    friend bool operator==(const eLightObject&, const eLightObject&) = default;
};

struct eOtherObject {
    std::uint32_t superClass = 0;
    host::ClassId classId{};

    friend bool operator==(const eOtherObject&, const eOtherObject&) = default;
};

using eObjectKind =
    std::variant<eHelperObject, eTargetObject, eBoxObject, eSphereObject, eCylinderObject, eMeshObject,
                 eRectangleObject, eCircleObject, eLineObject, eCameraObject, eLightObject, eOtherObject>;

struct eSkinWeight {
    int bone = 0;  // number in eSkinModifier::bones
    float weight = 0;

    friend bool operator==(const eSkinWeight&, const eSkinWeight&) = default;
};

// Linear blend of the bones' movement since the bind pose, relative to the node.
struct eSkinModifier {
    std::vector<int> bones{};  // nodes
    // The weights of vertex v stand in `weights` from firstWeight[v] up to firstWeight[v + 1]. A vertex
    // behind the last pair of bounds has none.
    std::vector<std::uint32_t> firstWeight{};
    std::vector<eSkinWeight> weights{};
    double bindFrame = 0;
    // Per bone, from the mesh's object space to the bone's space in the bind pose; empty where the bind pose
    // is the scene at bindFrame.
    std::vector<host::Matrix3> bindMatrices{};

    friend bool operator==(const eSkinModifier&, const eSkinModifier&) = default;
};

struct eOtherModifier {
    host::ClassId classId{};

    friend bool operator==(const eOtherModifier&, const eOtherModifier&) = default;
};

using eModifierKind = std::variant<eSkinModifier, eOtherModifier>;

struct eObjectData {
    std::string id{};  // key in the document's `objects`; empty for an object that stands at its node
    eObjectKind kind{};
    std::vector<eModifierKind> modifiers{};  // from the top of the stack down

    friend bool operator==(const eObjectData&, const eObjectData&) = default;
};

// Where a map takes its coordinates and how they are moved.
struct eMapCoordinates {
    int source = 0;  // 0 explicit channel, 1 object XYZ, 2 vertex colour channel, 3 world XYZ
    int channel = 1;
    host::Point2 offset{};
    host::Point2 tiling{1, 1};
    float angle = 0;  // degrees, counter-clockwise

    friend bool operator==(const eMapCoordinates&, const eMapCoordinates&) = default;
};

struct eBitmapMap {
    std::string file{};  // as the document has it
    // The file as the operating system names it, UTF-8, where a loader had to write it to a temporary folder;
    // empty where `file` says it.
    std::string onDisk{};
    // Where a loader has looked for the file in vain, UTF-8; empty where it has not looked.
    std::vector<std::string> tried{};
    host::Point2 cropOrigin{};  // u, v of the lower left corner
    host::Point2 cropSize{1, 1};
    float amount = 1;  // output curve
    bool invert = false;

    friend bool operator==(const eBitmapMap&, const eBitmapMap&) = default;
};

struct eNormalBumpMap {
    int normal = -1;

    friend bool operator==(const eNormalBumpMap&, const eNormalBumpMap&) = default;
};

struct eMixMap {
    std::array<int, 3> maps{-1, -1, -1};
    float amount = 0;

    friend bool operator==(const eMixMap&, const eMixMap&) = default;
};

struct eRgbMultiplyMap {
    std::array<int, 2> maps{-1, -1};

    friend bool operator==(const eRgbMultiplyMap&, const eRgbMultiplyMap&) = default;
};

struct eVertexColorMap {
    friend bool operator==(const eVertexColorMap&, const eVertexColorMap&) = default;
};

struct eCheckerMap {
    std::array<host::Color, 2> colors{};

    friend bool operator==(const eCheckerMap&, const eCheckerMap&) = default;
};

struct eOtherMap {
    host::ClassId classId{};
    host::Color color{};

    friend bool operator==(const eOtherMap&, const eOtherMap&) = default;
};

using eMapKind = std::variant<eBitmapMap, eNormalBumpMap, eMixMap, eRgbMultiplyMap, eVertexColorMap,
                              eCheckerMap, eOtherMap>;

struct eMapData {
    std::string name{};
    eMapCoordinates coordinates{};
    eMapKind kind{};

    friend bool operator==(const eMapData&, const eMapData&) = default;
};

inline constexpr int kMapSlots = 12;

struct eMapSlot {
    int map = -1;
    float amount = 1;
    bool enabled = true;

    friend bool operator==(const eMapSlot&, const eMapSlot&) = default;
};

// By sub-map index: ambient, diffuse, specular, specular level, glossiness, self-illumination, opacity,
// filter, bump, reflection, refraction, displacement.
using eMapSlots = std::array<eMapSlot, kMapSlots>;

struct eStandardMaterial {
    host::Color ambient{};
    host::Color diffuse{0.5F, 0.5F, 0.5F};
    host::Color specular{0.9F, 0.9F, 0.9F};
    float shininess = 0.1F;  // 0 to 1
    float shininessStrength = 0;
    float opacity = 1;
    bool twoSided = false;
    eMapSlots maps{};

    friend bool operator==(const eStandardMaterial&, const eStandardMaterial&) = default;
};

struct eMultiMaterial {
    std::vector<int> materials{};

    friend bool operator==(const eMultiMaterial&, const eMultiMaterial&) = default;
};

struct eTwoLayerMaterial {
    std::array<int, 2> materials{-1, -1};

    friend bool operator==(const eTwoLayerMaterial&, const eTwoLayerMaterial&) = default;
};

struct eSorrelMaterial {
    int material = -1;
    int blend = -1;
    int modulate2x = 0;
    int environment = 0;
    float strength = 0;
    int mask = -1;            // map
    int environmentMap = -1;  // map

    friend bool operator==(const eSorrelMaterial&, const eSorrelMaterial&) = default;
};

struct eOtherMaterial {
    host::ClassId classId{};
    host::Color diffuse{0.5F, 0.5F, 0.5F};
    float opacity = 1;
    eMapSlots maps{};

    friend bool operator==(const eOtherMaterial&, const eOtherMaterial&) = default;
};

using eMaterialKind =
    std::variant<eStandardMaterial, eMultiMaterial, eTwoLayerMaterial, eSorrelMaterial, eOtherMaterial>;

struct eMaterialData {
    std::string id{};  // key in the document's `materials`
    std::string name{};
    eMaterialKind kind{};

    friend bool operator==(const eMaterialData&, const eMaterialData&) = default;
};

struct eSelectionSet {
    std::string name{};
    std::vector<int> nodes{};

    friend bool operator==(const eSelectionSet&, const eSelectionSet&) = default;
};

struct eSceneData {
    std::string file{};  // path of the scene file, code page 1251
    // Folder that relative bitmap files lie in, code page 1251; empty where it is the folder of `file`.
    std::string folder{};
    double unitMetres = 1;
    int frameTicks = 160;
    int firstFrame = 0;
    int lastFrame = 100;
    host::Color ambient{};
    std::vector<eSelectionSet> selectionSets{};
    std::vector<eMaterialData> materials{};  // in document order
    std::vector<eMapData> maps{};            // in document order
    std::vector<eObjectData> objects{};      // in document order
    std::vector<eNodeData> nodes{};          // depth first, parents before children
    std::vector<int> roots{};                // children of the scene root, in order
    // Files that eBitmapMap::onDisk names, where a loader had to write them; kept as long as the scene.
    std::shared_ptr<platform::eTemporaryFolder> temporaryFiles{};

    friend bool operator==(const eSceneData&, const eSceneData&) = default;
};

}  // namespace standalone
