#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standalone/objects/tessellation.h"
#include "standalone/standalone_host.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;

constexpr int kTicks = 160;

host::INode& Find(StandaloneHost& host, const char* name) {
    return *host.GetINodeByName(name);
}

host::Mesh& MeshOf(StandaloneHost& host, const char* name, double frame = 0) {
    const auto t = static_cast<host::TimeValue>(frame * kTicks);
    host::Object* object = Find(host, name).EvalWorldState(t).obj;
    return static_cast<host::TriObject*>(object->ConvertToType(t, host::kTriObjectClass))->GetMesh();
}

// The volume that the faces enclose: right only if all of them face outward and no hole is left.
double Volume(const host::Mesh& mesh) {
    double volume = 0;
    for (const host::Face& face : mesh.faces) {
        volume +=
            DotProd(mesh.verts[face.v[0]], CrossProd(mesh.verts[face.v[1]], mesh.verts[face.v[2]])) / 6.0;
    }
    return volume;
}

bool MapIsWhole(const host::Mesh& mesh) {
    const host::MapChannel& map = mesh.maps.at(0);
    for (const host::Point3& p : map.verts) {
        if (p.x < 0 || p.x > 1 || p.y < 0 || p.y > 1) {
            return false;
        }
    }
    return map.channel == 1 && map.faces.size() == mesh.faces.size();
}

// Would catch a primitive of the wrong size or place, inside out, with holes, or without map coordinates.
TEST(Tessellation, PrimitivesFillTheirBounds) {
    const host::Mesh box = BoxMesh({.width = 2, .length = 4, .height = 6});
    EXPECT_EQ(BoundsOf(box).pmin, (host::Point3{-1, -2, 0}));
    EXPECT_EQ(BoundsOf(box).pmax, (host::Point3{1, 2, 6}));
    EXPECT_NEAR(Volume(box), 48, 1e-4);
    const host::Mesh sphere = SphereMesh({.radius = 3, .segments = 32});
    EXPECT_EQ(BoundsOf(sphere).pmin, (host::Point3{-3, -3, -3}));
    EXPECT_EQ(BoundsOf(sphere).pmax, (host::Point3{3, 3, 3}));
    EXPECT_NEAR(Volume(sphere), 113.1, 2);
    const host::Mesh cylinder = CylinderMesh({.radius = 3, .height = 5, .sides = 18});
    EXPECT_EQ(BoundsOf(cylinder).pmax.x, 3);
    EXPECT_EQ(BoundsOf(cylinder).pmin.z, 0);
    EXPECT_EQ(BoundsOf(cylinder).pmax.z, 5);
    EXPECT_NEAR(Volume(cylinder), 141.4, 4);
    EXPECT_TRUE(MapIsWhole(box) && MapIsWhole(sphere) && MapIsWhole(cylinder));
}

// Would catch sides that share smoothing or material, and a sphere with edges.
TEST(Tessellation, ABoxHasSixSidesAndASphereOne) {
    const host::Mesh box = BoxMesh({.width = 1, .length = 1, .height = 1});
    ASSERT_EQ(box.faces.size(), 12U);
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_EQ(box.faces[i].smGroup, 1U << i / 2);
        EXPECT_EQ(box.faces[i].getMatID(), i / 2);
    }
    for (const host::Face& face : SphereMesh({.radius = 1, .segments = 8}).faces) {
        EXPECT_EQ(face.smGroup, 1U);
    }
}

// Would catch classes that the exporter tells objects apart by, and conversions that should not exist.
TEST(Objects, HaveTheirClassesAndConvertOnlyAsGeometry) {
    support::eSceneBuilder scene;
    scene.Node("helper").Object(eHelperObject{});
    scene.Node("target").Object(eTargetObject{});
    scene.Node("box").Object(eBoxObject{1, 1, 1});
    scene.Node("mesh").Object(eMeshObject{support::GridMesh(1, 1)});
    scene.Node("circle").Object(eCircleObject{2});
    scene.Node("camera").Object(eCameraObject{});
    scene.Node("other").Object(eOtherObject{0x77, {1, 2}});
    scene.Node("none");
    StandaloneHost host(scene.Build());
    const auto expect = [&](const char* name, std::uint32_t superClass, const host::ClassId& id,
                            bool converts) {
        host::Object& object = *Find(host, name).EvalWorldState(0).obj;
        EXPECT_EQ(object.SuperClassID(), superClass) << name;
        EXPECT_EQ(object.ClassID(), id) << name;
        EXPECT_EQ(object.CanConvertToType(host::kTriObjectClass), converts) << name;
        EXPECT_EQ(object.ConvertToType(0, host::kTriObjectClass) != nullptr, converts) << name;
        EXPECT_EQ(object.ConvertToType(0, {1, 1}), nullptr) << name;
    };
    expect("helper", 0x50, {0x876234, 0}, false);
    expect("target", 0x10, {0x1020, 0}, false);
    expect("box", 0x10, {0x10, 0}, true);
    expect("mesh", 0x10, {0xE44F10B3, 0}, true);
    expect("circle", 0x40, {0x1999, 0}, false);
    expect("camera", 0x20, {0x1001, 0}, false);
    expect("other", 0x77, {1, 2}, false);
    EXPECT_EQ(Find(host, "none").EvalWorldState(0).obj, nullptr);
    EXPECT_EQ(Find(host, "none").GetObjectRef(), nullptr);
    const host::Box3 none = Find(host, "helper").GetObjectRef()->GetDeformBBox(0);
    EXPECT_EQ(none.pmin, (host::Point3{}));
    EXPECT_EQ(none.pmax, (host::Point3{}));
}

// Would catch shapes that are open, off their centre, or bounded by something else than their points.
TEST(Objects, ShapesGiveTheirLines) {
    support::eSceneBuilder scene;
    scene.Node("rectangle").Object(eRectangleObject{4, 2});
    scene.Node("circle").Object(eCircleObject{2});
    scene.Node("line").Object(eLineObject{{{{{1, 2, 3}, {4, 5, 6}}, false}, {}}});
    StandaloneHost host(scene.Build());
    const auto shape = [&](const char* name) {
        return Find(host, name).EvalWorldState(0).obj->MakePolyShape(0, -2, false);
    };
    EXPECT_EQ(shape("rectangle").lines.at(0).points.size(), 4U);
    EXPECT_TRUE(shape("rectangle").lines.at(0).closed);
    EXPECT_EQ(Find(host, "rectangle").GetObjectRef()->GetDeformBBox(0).pmax, (host::Point3{2, 1, 0}));
    EXPECT_EQ(shape("circle").lines.at(0).points.size(), 32U);
    EXPECT_EQ(shape("circle").lines.at(0).points[0], (host::Point3{2, 0, 0}));
    EXPECT_EQ(Find(host, "circle").GetObjectRef()->GetDeformBBox(0).pmin, (host::Point3{-2, -2, 0}));
    EXPECT_EQ(shape("line").lines.size(), 2U);
    EXPECT_FALSE(shape("line").lines[0].closed);
}

// Would catch sharing that is lost, or that joins objects which are merely alike.
TEST(Objects, AreSharedByReferenceOnly) {
    support::eSceneBuilder scene;
    support::eNode bone = scene.Node("bone");
    support::eNode a = scene.Node("a").Object(eBoxObject{1, 1, 1}).Skin({bone}, {{{0, 1}}});
    scene.Node("b").SameObject(a);
    scene.Node("alike").Object(eBoxObject{1, 1, 1});
    StandaloneHost host(scene.Build());
    EXPECT_EQ(Find(host, "a").GetObjectRef(), Find(host, "b").GetObjectRef());
    EXPECT_EQ(Find(host, "a").EvalWorldState(0).obj, Find(host, "b").EvalWorldState(5).obj);
    EXPECT_NE(Find(host, "a").EvalWorldState(0).obj, Find(host, "alike").EvalWorldState(0).obj);
}

// Would catch a copy of the mesh at every evaluation, and what evaluation adds kept for every object of a
// scene.
TEST(Objects, EvaluatedMeshesAreKeptForTheLatestObjectsOnly) {
    support::eSceneBuilder scene;
    for (int i = 0; i < 10; ++i) {
        scene.Node("n" + std::to_string(i)).Object(eMeshObject{support::GridMesh(2, 2)});
    }
    StandaloneHost host(scene.Build());
    host::Mesh& first = MeshOf(host, "n0");
    first.buildRenderNormals();
    EXPECT_EQ(&first, &MeshOf(host, "n0"));
    MeshOf(host, "n1");
    EXPECT_FALSE(first.renderVerts.empty());
    for (int i = 2; i < 10; ++i) {
        MeshOf(host, ("n" + std::to_string(i)).c_str());
    }
    EXPECT_EQ(first.renderVerts.capacity(), 0U);
    EXPECT_EQ(first.verts.size(), 9U);
}

// Would catch vertex keys that jump, extrapolate, or leave the bounds of another time.
TEST(Objects, VertexKeysMoveLinearly) {
    host::Mesh mesh = support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    std::vector<host::Point3> moved = mesh.verts;
    moved[1].x = 3;
    support::eSceneBuilder scene;
    scene.Node("n").Object(eMeshObject{mesh, {{10, mesh.verts}, {20, moved}}});
    StandaloneHost host(scene.Build());
    EXPECT_EQ(MeshOf(host, "n", 0).verts[1].x, 1);
    EXPECT_EQ(MeshOf(host, "n", 15).verts[1].x, 2);
    EXPECT_EQ(MeshOf(host, "n", 99).verts[1].x, 3);
    EXPECT_EQ(MeshOf(host, "n", 10).verts[1].x, 1);
    EXPECT_EQ(Find(host, "n").EvalWorldState(0).obj->GetDeformBBox(20 * kTicks).pmax.x, 3);
}

// A bar of three vertices: the first on bone `base`, the last on `tip`, which turns by 90 degrees in ten
// frames, the middle one without weights.
support::eSceneBuilder SkinnedScene() {
    support::eSceneBuilder scene;
    support::eNode base = scene.Node("base").Position(5, 0, 0);
    support::eNode tip = base.Child("tip").Position(1, 0, 0);
    tip.Key({.frame = 0, .rotation = support::RotationAbout({0, 0, 1}, 0)});
    tip.Key({.frame = 10, .rotation = support::RotationAbout({0, 0, 1}, 90)});
    host::Mesh mesh = support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {{0, 1, 2}});
    mesh.specifiedNormals = host::MeshNormalSpec{{{1, 0, 0}}, {-1, -1, 0}, {true}};
    support::eNode skin = scene.Node("skin").Position(5, 0, 0).Object(eMeshObject{mesh});
    skin.Skin({base, tip}, {{{0, 0.5F}}, {}, {{1, 3}, {0, 0}}});
    return scene;
}

host::Modifier& SkinOf(StandaloneHost& host, const char* name) {
    return *static_cast<host::IDerivedObject*>(Find(host, name).GetObjectRef())->GetModifier(0);
}

// Would catch a deformation that takes weights as they are, moves what nothing holds, forgets the node,
// leaves the normals behind, or stays after the time has changed.
TEST(Skin, MovesVerticesWithTheirBones) {
    StandaloneHost host(SkinnedScene().Build());
    const host::Mesh& bent = MeshOf(host, "skin", 10);
    EXPECT_TRUE(bent.verts[0].Equals({0, 0, 0}, 1e-5F));
    EXPECT_TRUE(bent.verts[1].Equals({1, 0, 0}, 1e-5F));
    EXPECT_TRUE(bent.verts[2].Equals({1, 1, 0}, 1e-5F));
    EXPECT_TRUE(bent.specifiedNormals->normals[0].Equals({0, 1, 0}, 1e-5F));
    EXPECT_TRUE(MeshOf(host, "skin", 0).verts[2].Equals({2, 0, 0}, 1e-5F));
    EXPECT_TRUE(MeshOf(host, "skin", 0).specifiedNormals->normals[0].Equals({1, 0, 0}, 1e-5F));
}

// Would catch a switch that does nothing, stays after its hold, or needs a notice to be seen.
TEST(Skin, TheSwitchGivesTheRestPose) {
    StandaloneHost host(SkinnedScene().Build());
    host::Modifier& skin = SkinOf(host, "skin");
    host.theHold().Begin();
    skin.SetAnimatableFlags(skin.AnimatableFlags() | host::Modifier::kDisabledFlag);
    skin.NotifyDependents(host::kForever, 0x80003FFF, 0x50, 0xFFFFFFF0, true);
    EXPECT_EQ(MeshOf(host, "skin", 10).verts[2], (host::Point3{2, 0, 0}));
    host.theHold().Cancel();
    EXPECT_TRUE(MeshOf(host, "skin", 10).verts[2].Equals({1, 1, 0}, 1e-5F));
}

// Would catch a bind pose taken from the scene although the file brings its own.
TEST(Skin, BindMatricesReplaceTheBindFrame) {
    support::eSceneBuilder builder = SkinnedScene();
    auto& modifier = std::get<eSkinModifier>(builder.Settings().objects.back().modifiers[0]);
    modifier.bindFrame = 10;
    StandaloneHost bent(builder.Build());
    EXPECT_TRUE(MeshOf(bent, "skin", 10).verts[2].Equals({2, 0, 0}, 1e-5F)) << "bound as it is bent";
    modifier.bindMatrices = {host::Matrix3(), host::TransMatrix({-2, 0, 0})};
    StandaloneHost host(builder.Build());
    EXPECT_TRUE(MeshOf(host, "skin", 10).verts[2].Equals({1, 0, 0}, 1e-5F))
        << "the last vertex stands in the tip";
}

// Would catch weights normalised for the reader, and weights told for a node that the skin does not act on.
TEST(Skin, TheReaderSeesTheWeightsAsGiven) {
    StandaloneHost host(SkinnedScene().Build());
    host::ISkin& skin = *SkinOf(host, "skin").GetInterface(host::Modifier::kSkinInterface);
    EXPECT_EQ(SkinOf(host, "skin").ClassID(), host::kSkinClass);
    EXPECT_EQ(SkinOf(host, "skin").GetInterface(1), nullptr);
    ASSERT_EQ(skin.GetNumBones(), 2);
    EXPECT_EQ(skin.GetBone(1), host.GetINodeByName("tip"));
    EXPECT_EQ(skin.GetContextInterface(Find(host, "base")), nullptr);
    const host::ISkinContextData& weights = *skin.GetContextInterface(Find(host, "skin"));
    EXPECT_EQ(weights.GetNumAssignedBones(0), 1);
    EXPECT_EQ(weights.GetBoneWeight(0, 0), 0.5F);
    EXPECT_EQ(weights.GetNumAssignedBones(1), 0);
    EXPECT_EQ(weights.GetAssignedBone(2, 0), 1);
    EXPECT_EQ(weights.GetNumAssignedBones(3), 0);
}

// Would catch a camera that ignores its target, counts the vertical angle or degrees, or keeps the distance
// after the hold.
TEST(Camera, LooksAtItsTarget) {
    support::eSceneBuilder scene;
    support::eNode target = scene.Node("aim").Position(0, 0, -30).Object(eTargetObject{});
    scene.Node("camera")
        .Position(0, 0, 10)
        .Object(eCameraObject{.fov = 90, .targetDistance = 7})
        .Target(target);
    StandaloneHost host(scene.Build());
    auto& camera = static_cast<host::CameraObject&>(*Find(host, "camera").EvalWorldState(0).obj);
    EXPECT_FLOAT_EQ(camera.EvalCameraState(0).fov, 1.5707964F);
    host.theHold().Begin();
    camera.UpdateTargDistance(0, Find(host, "camera"));
    EXPECT_FLOAT_EQ(camera.EvalCameraState(0).targetDistance, 40);
    host.theHold().Cancel();
    EXPECT_FLOAT_EQ(camera.EvalCameraState(0).targetDistance, 7);
}

}  // namespace
