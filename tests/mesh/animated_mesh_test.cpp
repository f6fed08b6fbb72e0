#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include "mesh/build/finite_vertex.h"
#include "mesh/mesh_run.h"
#include "mesh/read/animated_part.h"
#include "mesh/vertex_layout.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A triangle whose vertices rise by 1 from frame 0 to frame 10.
eMeshObject RisingTriangle() {
    eMeshObject object{TexturedTriangle(), {}};
    std::vector<host::Point3> risen = object.mesh.verts;
    for (host::Point3& vertex : risen) {
        vertex.z += 1;
    }
    object.vertexKeys = {{0, object.mesh.verts}, {10, risen}};
    return object;
}

// A merged mesh of one node, animated over the frames 0 to 10 and once more over 5 to 7.
void FlagScene(support::eSceneBuilder& scene) {
    scene.Settings().lastFrame = 10;
    support::eNode root = scene.Node("root").Object(eHelperObject{});
    root.Property("Model=units/tank").Property("animation=wave,all,0-10").Property("animation=calm,all,5-7");
    support::eNode flag = root.Child("flag").Property("CommonMesh").Object(RisingTriangle());
    scene.SelectionSet("all", {flag});
}

float HeightAt(eMeshRun& run, std::size_t frame) {
    return run.Bone("flag").mesh.frames[frame].positions[0].z;
}

// Catches frames at other times than their own, a frame that is read twice by two animations, and a first
// frame that is not the static one.
TEST(AnimatedMesh, EachFrameIsReadAtItsTime) {
    support::eSceneBuilder scene;
    FlagScene(scene);
    eMeshRun run(scene);
    EXPECT_THAT(run.Messages(), IsEmpty());
    ASSERT_EQ(run.Bone("flag").mesh.frames.size(), 11U);
    for (std::size_t frame = 0; frame <= 10; ++frame) {
        EXPECT_NEAR(HeightAt(run, frame), static_cast<float>(frame) / 10, 1e-6F);
        EXPECT_EQ(run.Bone("flag").mesh.frames[frame].positions.size(), 3U);
    }
}

// Catches a reversed animation that fills its frames from the end, or reads frame 0 twice.
TEST(AnimatedMesh, AReversedAnimationReadsTheTimesBackwards) {
    support::eSceneBuilder scene;
    FlagScene(scene);
    eMeshRun run(scene);
    run.SetOptions([](eExportOptions& options) { options.reverseAnimation = true; });
    run.Do();
    EXPECT_EQ(HeightAt(run, 0), 0);
    EXPECT_NEAR(HeightAt(run, 1), 1, 1e-6F);
    EXPECT_NEAR(HeightAt(run, 4), 0.7F, 1e-6F);
    EXPECT_NEAR(HeightAt(run, 10), 0.1F, 1e-6F);
}

// Catches vertices of a frame in another numbering, with another size, or without their flag.
TEST(AnimatedMesh, TheFrameTableHoldsTheVerticesInTheWeldedNumbering) {
    support::eSceneBuilder scene;
    FlagScene(scene);
    eMeshRun run(scene);
    const auto index = static_cast<std::size_t>(&run.Bone("flag") - run.exporter.bones.data());
    for (std::size_t frame = 0; frame <= 10; ++frame) {
        const eExportFrameBone& entry = run.exporter.frames[frame].bones[index];
        ASSERT_NE(entry.mesh, nullptr);
        EXPECT_NE(entry.flags & kFrameVertices, 0);
        EXPECT_EQ(entry.mesh->vertices.size(), run.Mesh("flag").vertexCount);
        EXPECT_EQ(entry.mesh->vertexSize, 36);  // the colour still counts: the animation file takes it out
        const eFileMesh file = run.Mesh("flag");
        const std::vector<std::uint16_t>& remap = run.Bone("flag").mesh.vertexRemap;
        for (std::size_t v = 0; v < file.vertexCount; ++v) {
            const eExportVertex written = file.Vertex(file.subMeshes[0], v);
            EXPECT_EQ(entry.mesh->vertices[remap[v]].position.x, written.position.x);
            EXPECT_EQ(entry.mesh->vertices[remap[v]].uv0, written.uv0);
        }
    }
}

// Catches parts that shift when an animation leaves out a node before or behind them.
TEST(AnimatedMesh, APartThatAnAnimationLeavesOutStandsStill) {
    for (const bool movesFirst : {true, false}) {
        support::eSceneBuilder scene;
        scene.Settings().lastFrame = 10;
        support::eNode root = scene.Node("root").Object(eHelperObject{});
        root.Property("Model=units/tank").Property("animation=wave,moving,0-10");
        support::eNode flag = root.Child("flag").Property("CommonMesh").Object(RisingTriangle());
        support::eNode edge = flag.Child("edge").Property("CommonMesh=flag").Object(RisingTriangle());
        edge.Position(5, 0, 0);
        scene.SelectionSet("moving", {movesFirst ? flag : edge});
        eMeshRun run(scene);
        EXPECT_THAT(run.Messages(), IsEmpty());
        const eExportMesh& mesh = run.Bone("flag").mesh;
        ASSERT_EQ(mesh.faces.size(), 2U);
        const std::vector<host::Point3>& positions = mesh.frames[10].positions;
        ASSERT_EQ(positions.size(), 6U);
        EXPECT_EQ(positions[mesh.faces[0].v[0]], (host::Point3{0, 0, movesFirst ? 1.0F : 0.0F}));
        EXPECT_EQ(positions[mesh.faces[1].v[0]], (host::Point3{5, 0, movesFirst ? 0.0F : 1.0F}));
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
    const auto index = static_cast<std::size_t>(&run.Bone("flag") - run.exporter.bones.data());
    for (const std::size_t frame : {3U, 4U, 10U}) {
        const std::vector<eExportVertex>& vertices = run.exporter.frames[frame].bones[index].mesh->vertices;
        EXPECT_NEAR(vertices[0].position.z, frame == 3 ? 300 : 0, 1e-3F);
        EXPECT_TRUE(std::ranges::all_of(vertices, IsFinite));
    }
    EXPECT_EQ(run.Mesh("flag").indices.size(), 3U);
}

// Catches a node that writes beyond the frames of the mesh that it feeds, and a silence about it.
TEST(AnimatedMesh, ATargetWithoutFramesIsTold) {
    support::eSceneBuilder scene;
    scene.Settings().lastFrame = 10;
    support::eNode root = scene.Node("root").Object(eHelperObject{});
    root.Property("Model=units/tank").Property("animation=wave,all,0-10").Property("animation=calm,all,5-7");
    support::eNode flag = MeshNode(root, "flag", TexturedTriangle());
    support::eNode edge = flag.Child("edge").Property("CommonMesh=flag").Object(RisingTriangle());
    edge.Position(5, 0, 0);
    scene.SelectionSet("all", {flag, edge});
    eMeshRun run(scene);
    EXPECT_THAT(run.Messages(),
                ElementsAre(HasSubstr("Мэш 'edge' анимирован по кадрам, а общий мэш 'flag', в который он "
                                      "входит, нет.")));
    EXPECT_EQ(run.Mesh("flag").indices.size(), 6U);
}

// Catches a part that is lost because its target comes later in the scene, and one that comes too late and is
// lost without a word.
TEST(AnimatedMesh, APartMayComeBeforeItsTargetButNotBehindIt) {
    for (const bool before : {true, false}) {
        support::eSceneBuilder scene;
        support::eNode root = Model(scene);
        support::eNode first =
            root.Child(before ? "edge" : "flag").Object(eMeshObject{TexturedTriangle(), {}});
        support::eNode second =
            root.Child(before ? "flag" : "edge").Object(eMeshObject{TexturedTriangle(), {}});
        (before ? first : second).Property("CommonMesh=flag").Position(5, 0, 0);
        (before ? second : first).Property("Poly");
        eMeshRun run(scene);
        EXPECT_EQ(run.Bone("flag").mesh.faces.size(), before ? 2U : 1U);
        EXPECT_EQ(run.Messages().size(), before ? 0U : 1U);
        if (!before) {
            EXPECT_THAT(run.Messages()[0],
                        HasSubstr("Мэш 'edge' не попал в общий мэш 'flag': тот уже записан."));
        }
    }
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
    reading.run.animWriter = std::make_unique<xIo::xSdl::eWriter>();
    reading.run.animWriter->Attach(&animationList);
    eScene fake(scene.Build());
    eShrinkingNode node(fake, fake.data.nodes[0], 0);
    node.SetRenderData(std::make_unique<Export::eRenderData>(0));
    eExportBone& bone = reading.Slot("flag", 6);
    bone.node = &node;
    bone.commonMesh = true;
    reading.run.frames.resize(6);
    eExportAnimation wave;
    wave.lastFrame = 5;
    reading.run.animations = {wave};
    reading.run.options.exportAnimation = 1;
    for (eExportFrame& frame : reading.run.frames) {
        frame.bones.resize(1);
    }
    ExtractNodeMesh(reading.run, node, nullptr, &node);
    for (const eExportMeshFrame& frame : bone.mesh.frames) {
        EXPECT_EQ(ExtentOf(frame), (eFrameExtent{4, 2}));
        EXPECT_EQ(frame.positions, bone.mesh.frames[0].positions);
    }
    EXPECT_THAT(reading.messages.Lines(),
                ElementsAre(HasSubstr("Мэш 'flag' в кадре 3 состоит из других граней")));
}

}  // namespace
