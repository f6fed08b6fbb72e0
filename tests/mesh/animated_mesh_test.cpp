#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <sstream>

#include "animation/animation_reader.h"
#include "animation/export_frame.h"
#include "animation/model_motion.h"
#include "geometry/vertex_layout.h"
#include "mesh/build/finite_vertex.h"
#include "mesh/mesh_run.h"
#include "mesh/read/animated_part.h"
#include "run/model_texts.h"
#include "scene/current_model.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

// A triangle whose vertices rise by 1 from the frame on for ten frames.
eMeshObject RisingTriangle(int begin = 0) {
    eMeshObject object{TexturedTriangle(), {}};
    std::vector<host::Point3> risen = object.mesh.verts;
    for (host::Point3& vertex : risen) {
        vertex.z += 1;
    }
    object.vertexKeys = {{static_cast<double>(begin), object.mesh.verts}, {begin + 10.0, risen}};
    return object;
}

// A merged mesh of one node, animated over eleven frames and once more over three of them.
void FlagScene(support::eSceneBuilder& scene, int begin = 0) {
    scene.Settings().firstFrame = begin;
    scene.Settings().lastFrame = begin + 10;
    support::eNode root = scene.Node("root").Object(eHelperObject{});
    root.Property("Model=units/tank").Property("animation=wave,all");
    root.Property("animation=calm,all," + std::to_string(begin + 5) + "-" + std::to_string(begin + 7));
    support::eNode flag = root.Child("flag").Property("CommonMesh").Object(RisingTriangle(begin));
    scene.SelectionSet("all", {flag});
}

float HeightAt(eMeshRun& run, int frame) {
    return run.Faces("flag").frames[run.exporter.motion->frames.MeshFrameOf(frame)].positions[0].z;
}

// Catches frames at other times than their own, a frame that is read twice by two animations, a first frame
// that is not the static one, timelines that are lost as they don't begin at 0, and a reversed animation that
// fills its frames from the end. Also a soup that stays in memory behind its file.
TEST(AnimatedMesh, EachFrameIsReadAtItsTime) {
    for (const int begin : {0, -4, 70000}) {
        support::eSceneBuilder scene;
        FlagScene(scene, begin);
        eMeshRun run(scene);
        EXPECT_THAT(run.Messages(), IsEmpty());
        EXPECT_EQ(run.Faces("flag").frames.size(), begin == 0 ? 11U : 12U);
        EXPECT_EQ(run.Bone("flag").mesh.frames.size(), 1U);
        for (int frame = 0; frame <= 10; ++frame) {
            EXPECT_NEAR(HeightAt(run, begin + frame), static_cast<float>(frame) / 10, 1e-6F);
        }
        for (const eExportMeshFrame& frame : run.Faces("flag").frames) {
            EXPECT_EQ(frame.positions.size(), 3U);
        }
    }
    support::eSceneBuilder scene;
    FlagScene(scene);
    eMeshRun run(scene);
    run.SetOptions([](eExportOptions& options) { options.reverseAnimation = true; });
    run.Do();
    EXPECT_EQ(HeightAt(run, 0), 0);
    EXPECT_NEAR(HeightAt(run, 1), 1, 1e-6F);
    EXPECT_NEAR(HeightAt(run, 10), 0.1F, 1e-6F);
}

// Per bone of the animation the number of its keys, and of those with vertices.
std::map<std::string, std::pair<int, int>> KeysOf(const eMeshRun& run, const std::string& path) {
    const std::string bytes = run.Read(path);
    std::string problem;
    const eAnimation animation = ReadAnimation(BytesOf(bytes), problem).value_or(eAnimation{});
    std::map<std::string, std::pair<int, int>> keys;
    for (const eAnimationFrame& frame : animation.frames) {
        for (const eAnimationKey& key : frame.keys) {
            auto& [all, withVertices] = keys[animation.bones[static_cast<std::size_t>(key.bone)]];
            ++all;
            withVertices += key.vertexSection.empty() ? 0 : 1;
        }
    }
    return keys;
}

// Catches frames that carry the name of the part which came last, an ordinary bone that loses its first frame
// or gets vertices, and a question about the mesh, its space first, that is asked of a part.
TEST(AnimatedMesh, AStaticPartLeavesTheBoneWhatItHas) {
    support::eSceneBuilder scene;
    scene.Settings().lastFrame = 10;
    support::eNode root = Model(scene).Property("animation=wave,all,0-10");
    support::eNode flag = root.Child("flag").Property("CommonMesh").Property("AniTex=water,5");
    flag.Object(RisingTriangle());
    support::eNode badge = flag.Child("badge").Property("CommonMesh=flag").Position(5, 0, 0);
    badge.Object(eMeshObject{TexturedTriangle(), {}});
    support::eNode arm = MeshNode(root, "arm", TexturedTriangle()).GroupHead();
    arm.Key({.frame = 0, .position = host::Point3{0, 0, 0}});
    arm.Key({.frame = 10, .position = host::Point3{0, 0, 3}});
    support::eNode stripe = arm.Child("stripe").Property("CommonMesh=arm").Position(5, 0, 0);
    stripe.Object(eMeshObject{TexturedTriangle(), {}});
    support::eNode part = arm.Child("part").GroupMember().Position(0, 7, 0);
    part.Object(eMeshObject{TexturedTriangle(), {}});
    scene.SelectionSet("all", {flag, arm});
    eMeshRun run(scene);
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_THAT(KeysOf(run, "units/tank/wave.anm"),
                ElementsAre(Pair("arm", Pair(11, 0)), Pair("flag", Pair(11, 11))));
    EXPECT_THAT(run.Text("units/tank/tank.mdl"), HasSubstr("{name \"water\"}"));
    EXPECT_EQ(run.Soup("arm").positions[6], (host::Point3{0, 7, 0}));
}

// Catches vertices that stand still, fly to each other's places or are read as noise, a frame without news
// that says it has some, and a flag that is culled when it leaves its rest shape. Two corners slide along x
// up to frame 2, and all vertices rise up to frame 4.
TEST(AnimatedMesh, SectionsHoldWhatMoves) {
    support::eSceneBuilder scene;
    scene.Settings().lastFrame = 4;
    eMeshObject cloth{support::GridMesh(2, 1), {}};
    std::vector<host::Point3> places = cloth.mesh.verts;
    cloth.vertexKeys = {{0, places}, {1, places}};
    places[0].x = -0.5F;
    places[5].x = 2.25F;
    cloth.vertexKeys.insert(cloth.vertexKeys.end(), {{2, places}, {3, places}});
    std::ranges::for_each(places, [](host::Point3& place) { place.z = 1; });
    cloth.vertexKeys.push_back({4, places});
    support::eNode root = Model(scene).Property("animation=wave,all");
    scene.SelectionSet("all", {root.Child("flag").Property("CommonMesh").Object(cloth)});
    eMeshRun run(scene);
    const eFileMesh mesh = run.Mesh("flag");
    const std::string bytes = run.Read("units/tank/wave.anm");
    std::string problem;
    const eAnimation animation = ReadAnimation(BytesOf(bytes), problem).value_or(eAnimation{});
    std::multiset<std::string> told;
    const auto tell = [&](int frame, const host::Point3& from, const char* word, const host::Point3& to) {
        std::ostringstream line;
        line << frame << ": " << from.x << ' ' << from.y << ' ' << from.z << word << to.x << ' ' << to.y
             << ' ' << to.z;
        told.insert(line.str());
    };
    for (const eAnimationFrame& frame : animation.frames) {
        if ((frame.keys.at(0).flags & kFrameVertices) == 0) {
            continue;
        }
        const int stride = static_cast<int>(mesh.stride);
        const auto blocks = ReadVertexSection(frame.keys[0].vertexSection, stride, problem);
        ASSERT_TRUE(blocks) << problem;
        for (const eVertexBlock& block : *blocks) {
            for (int i = 0; i < block.count; ++i) {
                host::Point3 place;
                std::memcpy(&place, &block.vertices[static_cast<std::size_t>(i * stride)], sizeof place);
                tell(frame.frame,
                     mesh.Vertex(mesh.subMeshes[0], static_cast<std::size_t>(block.first + i)).position,
                     " to ", place);
            }
            if (block.box) {
                tell(frame.frame, block.box->pmin, " within ", block.box->pmax);
            }
        }
    }
    EXPECT_THAT(
        told, ElementsAre("0: -0.5 0 0 within 2.25 1 1", "0: 0 0 0 to 0 0 0", "0: 0 1 0 to 0 1 0",
                          "0: 1 0 0 to 1 0 0", "0: 1 1 0 to 1 1 0", "0: 2 0 0 to 2 0 0", "0: 2 1 0 to 2 1 0",
                          "2: 0 0 0 to -0.5 0 0", "2: 2 1 0 to 2.25 1 0", "4: -0.5 0 1 within 2.25 1 1",
                          "4: 0 0 0 to -0.5 0 1", "4: 0 1 0 to 0 1 1", "4: 1 0 0 to 1 0 1",
                          "4: 1 1 0 to 1 1 1", "4: 2 0 0 to 2 0 1", "4: 2 1 0 to 2.25 1 1"));
}

// Catches parts that shift when an animation leaves out one of them, and a part before its mesh that stays
// behind.
TEST(AnimatedMesh, EachPartMovesWhereTheAnimationCoversIt) {
    for (const bool edgeIsFirst : {true, false}) {
        for (const bool edgeMoves : {true, false}) {
            support::eSceneBuilder scene;
            scene.Settings().lastFrame = 10;
            support::eNode root = Model(scene).Property("animation=wave,moving,0-10");
            support::eNode first = root.Child(edgeIsFirst ? "edge" : "flag").Object(RisingTriangle());
            support::eNode second =
                (edgeIsFirst ? root : first).Child(edgeIsFirst ? "flag" : "edge").Object(RisingTriangle());
            support::eNode& flag = (edgeIsFirst ? second : first).Property("CommonMesh");
            support::eNode& edge =
                (edgeIsFirst ? first : second).Property("CommonMesh=flag").Position(5, 0, 0);
            scene.SelectionSet("moving", edgeMoves ? std::vector{flag, edge} : std::vector{flag});
            eMeshRun run(scene);
            EXPECT_THAT(run.Messages(), IsEmpty());
            const std::vector<host::Point3>& positions = run.Faces("flag").frames[10].positions;
            ASSERT_EQ(positions.size(), 6U);
            EXPECT_EQ(positions[edgeIsFirst ? 3 : 0], (host::Point3{0, 0, 1}));
            EXPECT_EQ(positions[edgeIsFirst ? 0 : 3], (host::Point3{5, 0, edgeMoves ? 1.0F : 0.0F}));
            EXPECT_EQ(run.Mesh("flag").indices.size(), 6U);
        }
    }
}

// Catches a part that writes beyond the frames of its mesh, and motion that is lost in silence or told of a
// part that keeps its shape.
TEST(AnimatedMesh, MotionThatTheMeshDoesNotHoldIsTold) {
    struct eCase {
        const char* flag;
        eMeshObject edge;
        testing::Matcher<std::vector<std::string>> messages;
    };
    const eMeshObject still{TexturedTriangle(), {}};
    const eCase cases[] = {
        {"Poly", RisingTriangle(),
         ElementsAre(HasSubstr("'edge' анимирован по кадрам в анимации 'wave', а общий мэш 'flag', "))},
        {"Poly", still, IsEmpty()},
        {"CommonMesh", RisingTriangle(),
         ElementsAre(HasSubstr("Анимация 'wave' охватывает мэш 'edge', но не общий мэш 'flag', "))},
    };
    for (const eCase& one : cases) {
        support::eSceneBuilder scene;
        scene.Settings().lastFrame = 10;
        support::eNode root = Model(scene).Property("animation=wave,all,0-10");
        support::eNode flag = root.Child("flag").Property(one.flag).Object(RisingTriangle());
        support::eNode edge = flag.Child("edge").Property("CommonMesh=flag").Position(5, 0, 0);
        edge.Object(one.edge);
        scene.SelectionSet("all", {edge});
        eMeshRun run(scene);
        EXPECT_THAT(run.Messages(), one.messages);
        EXPECT_EQ(run.Mesh("flag").indices.size(), 6U);
    }
}

// Catches a position that leaves the range of numbers behind the static frame, and a mesh lost to one frame.
TEST(AnimatedMesh, AFrameThatOverflowsKeepsTheStaticShape) {
    support::eSceneBuilder scene;
    FlagScene(scene);
    scene.Settings().unitMetres = 1000;
    auto& rising = std::get<eMeshObject>(scene.Settings().objects.back().kind);
    rising.vertexKeys[1].vertices[2].x = 1e36F;
    eMeshRun run(scene);
    EXPECT_THAT(
        run.Messages(),
        ElementsAre(HasSubstr("Мэш 'flag' в кадре 4 содержит координаты, которые не являются числами.")));
    const auto index = static_cast<std::size_t>(&run.Bone("flag") - run.exporter.model->bones.data());
    for (const int frame : {3, 4, 10}) {
        const std::vector<eExportVertex>& vertices =
            run.exporter.motion->frames.At(frame).bones[index].mesh->vertices;
        EXPECT_NEAR(vertices[0].position.z, frame == 3 ? 300 : 0, 1e-3F);
        EXPECT_TRUE(std::ranges::all_of(vertices, IsFinite));
    }
    EXPECT_EQ(run.Mesh("flag").indices.size(), 3U);
}

// Catches a part that comes too late and is lost without a word.
TEST(AnimatedMesh, APartBehindItsWrittenMeshIsTold) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene);
    MeshNode(root, "flag", TexturedTriangle());
    root.Child("edge").Property("CommonMesh=flag").Object(eMeshObject{TexturedTriangle(), {}});
    eMeshRun run(scene);
    EXPECT_EQ(run.Mesh("flag").indices.size(), 3U);
    EXPECT_THAT(run.Messages(),
                ElementsAre(HasSubstr("Мэш 'edge' не попал в общий мэш 'flag': тот уже записан.")));
}

// A node that loses a face behind frame 2.
class eShrinkingNode : public eSceneNode {
public:
    using eSceneNode::eSceneNode;

    host::ObjectState EvalWorldState(host::TimeValue t) override {
        object.mesh = t > 320 ? TexturedTriangle() : support::GridMesh(1, 1);
        return {&object};
    }

private:
    class eShrinkingObject : public host::TriObject {
    public:
        host::Mesh mesh;

        std::uint32_t SuperClassID() const override { return host::kGeometrySuperClass; }
        host::ClassId ClassID() const override { return host::kTriObjectClass; }
        bool CanConvertToType(const host::ClassId&) const override { return true; }
        host::Object* ConvertToType(host::TimeValue, const host::ClassId&) override { return this; }
        host::Mesh& GetMesh() override { return mesh; }
    };

    eShrinkingObject object;
};

// Catches faces of one frame that are looked up in the lists of another.
TEST(AnimatedMesh, AFrameWithOtherFacesKeepsTheStaticShape) {
    support::eSceneBuilder scene;
    scene.Node("flag").Property("Model=units/tank").Object(eHelperObject{});
    xIo::eMemoryStream animationList;
    eMeshReading reading(scene);
    reading.run.texts->animWriter = std::make_unique<xIo::xSdl::eWriter>();
    reading.run.texts->animWriter->Attach(&animationList);
    eScene fake(scene.Build());
    eShrinkingNode node(fake, fake.data.nodes[0], 0);
    node.SetRenderData(std::make_unique<Export::eRenderData>(0));
    eExportBone& bone = reading.Slot("flag", 6);
    bone.node = &node;
    bone.commonMesh = true;
    eExportAnimation wave;
    wave.lastFrame = 5;
    reading.run.motion->animations = {wave};
    reading.run.options.exportAnimation = 1;
    reading.run.motion->frames = eFrameTable(reading.run.motion->animations, 1);
    ExtractNodeMesh(reading.run, node, nullptr, &node);
    for (const eExportMeshFrame& frame : bone.mesh.frames) {
        EXPECT_EQ(ExtentOf(frame), (eFrameExtent{4, 2}));
        EXPECT_EQ(frame.positions, bone.mesh.frames[0].positions);
    }
    EXPECT_THAT(reading.messages.Lines(),
                ElementsAre(HasSubstr("Мэш 'flag' в кадре 3 состоит из других граней")));
}

}  // namespace
