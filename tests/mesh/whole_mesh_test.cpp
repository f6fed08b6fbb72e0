// Whole exports of small scenes that are symmetric under nothing, held by numbers worked out by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "animation/animation_reader.h"
#include "geometry/vertex_layout.h"
#include "material/queries/dum_mtl.h"
#include "mesh/mesh_run.h"
#include "mesh/read/extract_mesh.h"
#include "standalone/objects/scene_node.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The vertex of the mesh's only piece that stands at the place.
eExportVertex VertexAt(const eFileMesh& mesh, const host::Point3& place) {
    for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
        const eExportVertex vertex = mesh.Vertex(mesh.subMeshes[0], i);
        if (vertex.position.Equals(place, 1e-4F)) {
            return vertex;
        }
    }
    ADD_FAILURE() << "no vertex at " << place.x << " " << place.y << " " << place.z;
    return {};
}

bool IsNear(const host::Point4& a, const host::Point4& b) {
    return a.Equals(b, 1e-4F);
}

// Catches light in another space than the mesh, from lamps that are off or leave the node out, without the
// ambient share or the angle, colours that are cut or swapped, and normals that light the mesh once more.
//
// Scene units are centimetres. The post is turned by 90 degrees about z, so that the sign, which stands
// upright and faces -y in its own space, faces +x in the world; the lamp hangs three metres in front of its
// first corner:
//     corner, world     to the lamp       cosine     red (0.5), green (0.25), blue (0.125), each + 0.5 * 0.2
//     200    0    0    300    0    0    1          0.6    * 255 = 153  0.35   ->  89  0.225  -> 57
//     200  200    0    300 -200    0    0.83205    0.5160 * 255 = 132  0.3080 ->  79  0.2040 -> 52
//     200    0  100    300    0 -100    0.94868    0.5743 * 255 = 146  0.3372 ->  86  0.2186 -> 56
TEST(WholeMesh, ALitSignOnATurnedPost) {
    support::eSceneBuilder scene;
    scene.Settings().unitMetres = 0.01;
    scene.Settings().ambient = {0.2F, 0.2F, 0.2F};
    support::eNode post = Model(scene).Position(300, 0, 0).Rotation({0, 0, 1}, 90);
    support::eNode sign =
        MeshNode(post, "sign", support::TriangleMesh({{0, 0, 0}, {200, 0, 0}, {0, 0, 100}}, {{0, 1, 2}}))
            .Position(0, 100, 0);
    const eLightObject lamp{.color = {0.5F, 0.25F, 0.125F}};
    post.Child("near").Position(0, -200, 0).Object(lamp);
    eLightObject off = lamp, elsewhere = lamp;
    off.on = false;
    elsewhere.listedNodes = {sign.Number()};
    post.Child("off").Position(0, -200, 0).Object(off);
    // In front of the sign also where its place in the world is taken for one in the sign's space.
    post.Child("elsewhere").Position(-300, -200, 0).Object(elsewhere);
    eMeshRun run(scene);
    const eFileMesh mesh = run.Mesh("sign");
    ASSERT_EQ(mesh.vertexCount, 3U);
    EXPECT_EQ(VertexAt(mesh, {0, 0, 0}).color, 0xFF995939U);
    EXPECT_EQ(VertexAt(mesh, {2, 0, 0}).color, 0xFF844F34U);
    EXPECT_EQ(VertexAt(mesh, {0, 0, 1}).color, 0xFF925638U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(mesh.Vertex(mesh.subMeshes[0], i).normal, (host::Point3{0, 0, 1}));
    }
}

// Catches records of a mirrored node in the host's corner order, numbers that are not turned into places of
// the palette, and weights that are not brought to one. Each corner follows bones of its own.
TEST(WholeMesh, EachCornerOfAMirroredGloveFollowsItsBones) {
    for (const float side : {1.0F, -1.0F}) {
        support::eSceneBuilder scene;
        support::eNode root = Model(scene);
        support::eNode glove = MeshNode(root, "glove", TexturedTriangle()).Scale(side, 1, 1);
        std::vector<support::eNode> bones;
        for (const char* name : {"Thumb", "index", "palm"}) {
            bones.push_back(root.Child(name).Object(eHelperObject{}));
        }
        glove.Skin(bones, {{{2, 0.5F}, {0, 1.5F}}, {{1, 1}}, {{2, 3}, {1, 1}}});
        eMeshRun run(scene);
        const eFileMesh mesh = run.Mesh("glove");
        const auto bonesAt = [&](const host::Point3& place) {
            const eExportVertex vertex = VertexAt(mesh, place);
            std::string text;
            for (int k = 0; k < 2; ++k) {
                const int number = mesh.subMeshes[0].palette[vertex.boneIndices[k]];
                text += (number == 0 ? "none" : mesh.bones[static_cast<std::size_t>(number - 1)]) + " ";
            }
            return text + std::to_string(static_cast<int>(vertex.weights[0] * 100));
        };
        EXPECT_EQ(bonesAt({0, 0, 0}), "thumb palm 75");
        EXPECT_EQ(bonesAt({2, 0, 0}), "index none 100");
        EXPECT_EQ(bonesAt({0, 2, 0}), "palm index 75");
    }
}

// A sail with a normal map whose corner swings, and with it the tangent: at frame f it lies at
// (2 - 0.2 f, 0, 2 f). The mast carries it in units of half a metre.
void SailScene(support::eSceneBuilder& scene) {
    scene.Settings().unitMetres = 0.5;
    scene.Settings().lastFrame = 20;
    eStandardMaterial canvas = TexturedMaterial(scene.Map(eCheckerMap{}));
    canvas.maps[host::kBumpMap].map = scene.Map(eBitmapMap{.file = "none.png"});
    eMeshObject object{
        support::TriangleMesh({{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {9, 0, 0}, {9, 3, 0}, {9, 0, 1}},
                              {{0, 1, 2}, {3, 4, 5}}),
        {}};
    object.mesh.maps.push_back({1, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{0, 1, 2}}, {{0, 1, 2}}}});
    std::vector<host::Point3> swung = object.mesh.verts;
    swung[1] = {0, 0, 20};
    object.vertexKeys = {{0, object.mesh.verts}, {10, swung}};
    support::eNode mast = Model(scene).Property("animation=swing,all,5-7");
    support::eNode sail = mast.Child("sail").Property("CommonMesh").Object(object);
    sail.Material(scene.Material("canvas", canvas));
    scene.SelectionSet("all", {sail});
}

// What a frame of swing.anm says of the sail: the position and the tangent of the corner, in the blocks of
// the frame.
struct eSailFrame {
    std::vector<std::pair<int, int>> runs;  // first vertex and number, of each block
    std::vector<host::Box3> boxes;
    host::Point3 corner;
    host::Point4 tangent;
};

eSailFrame FrameOfSail(eMeshRun& run, std::size_t frame) {
    const eFileMesh mesh = run.Mesh("sail");
    std::size_t number = 0;
    while (mesh.Vertex(mesh.subMeshes[0], number).uv0 != host::Point2{1, 1} ||
           mesh.Vertex(mesh.subMeshes[0], number).position.x > 2) {
        ++number;
    }
    std::string problem;
    const std::string file = run.Read("units/tank/swing.anm");
    const std::optional<eAnimation> swing = ReadAnimation(BytesOf(file), problem);
    EXPECT_TRUE(swing && swing->frames.size() == 3) << problem;
    const auto blocks = ReadVertexSection(swing->frames.at(frame).keys.at(0).vertexSection,
                                          static_cast<int>(mesh.stride), problem);
    EXPECT_TRUE(blocks) << problem;
    eSailFrame result;
    for (const eVertexBlock& block : blocks.value_or(std::vector<eVertexBlock>{})) {
        result.runs.emplace_back(block.first, block.count);
        if (block.box) {
            result.boxes.push_back(*block.box);
        }
        const int place = static_cast<int>(number) - block.first;
        if (place >= 0 && place < block.count) {
            const eExportVertex vertex =
                UnpackVertex(mesh.subMeshes[0].format,
                             block.vertices.data() + static_cast<std::size_t>(place) * mesh.stride);
            result.corner = vertex.position;
            result.tangent = vertex.tangent;
        }
    }
    return result;
}

// Catches frames at other times than their own, a reversed animation that counts from frame 0, tangents that
// stay those of the first frame, runs that hold what does not move or leave out what does, and boxes of
// single frames.
//
//     frame   corner, metres    tangent, along it           box of the animation
//     5       0.5  0  5       (0.09950, 0, 0.99504)     lower 0 0 0, upper 4.5 1.5 7
//     6       0.4  0  6       (0.06652, 0, 0.99778)
//     7       0.3  0  7       (0.04282, 0, 0.99908)
TEST(WholeMesh, ASwingingSailForwardsAndBackwards) {
    for (const bool reverse : {false, true}) {
        support::eSceneBuilder scene;
        SailScene(scene);
        eMeshRun run(scene);
        run.SetOptions([&](eExportOptions& options) { options.reverseAnimation = reverse; });
        run.Do();
        const eSailFrame first = FrameOfSail(run, reverse ? 2 : 0);
        const eSailFrame middle = FrameOfSail(run, 1);
        const eSailFrame last = FrameOfSail(run, reverse ? 0 : 2);
        EXPECT_TRUE(first.corner.Equals({0.5F, 0, 5}, 1e-4F));
        EXPECT_TRUE(middle.corner.Equals({0.4F, 0, 6}, 1e-4F));
        EXPECT_TRUE(last.corner.Equals({0.3F, 0, 7}, 1e-4F));
        EXPECT_TRUE(IsNear(first.tangent, {0.09950F, 0, 0.99504F, -1}));
        EXPECT_TRUE(IsNear(middle.tangent, {0.06652F, 0, 0.99778F, -1}));
        EXPECT_TRUE(IsNear(last.tangent, {0.04282F, 0, 0.99908F, -1}));
        // The whole mesh first, then the triangle that moves; a box around all frames, and one around the
        // last.
        const eSailFrame& whole = reverse ? last : first;
        const eSailFrame& end = reverse ? first : last;
        EXPECT_THAT(whole.runs, ElementsAre(std::pair(0, 6)));
        ASSERT_EQ(whole.boxes.size(), 1U);
        EXPECT_TRUE(whole.boxes[0].pmin.Equals({0, 0, 0}, 1e-4F));
        EXPECT_TRUE(whole.boxes[0].pmax.Equals({4.5F, 1.5F, 7}, 1e-4F));
        EXPECT_THAT(middle.runs, ElementsAre(testing::Pair(testing::_, 3)));
        EXPECT_THAT(middle.boxes, IsEmpty());
        ASSERT_EQ(end.boxes.size(), 1U);
        EXPECT_NEAR(end.boxes[0].pmax.z, reverse ? 5 : 7, 1e-4F);
    }
}

// Catches bounds that forget a point which no triangle shows, box coordinates from the wrong corner, members
// that are not renderable, and an instance that is read a second time and told twice.
TEST(WholeMesh, WhatIsSeenAndWhatIsNot) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene);
    support::eNode head =
        MeshNode(root, "head",
                 support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 2, 0}, {0, 0, 9}, {0, -4, 0}},
                                       {{0, 1, 2}, {3, 3, 4}}))
            .GroupHead();
    head.Child("guide").GroupMember().NotRenderable().Object(eMeshObject{support::GridMesh(1, 1), {}});
    const int rain = scene.Material("wet", TexturedMaterial(scene.Map(eCheckerMap{}, {.source = 3}, "rain")));
    const host::Mesh corner = support::TriangleMesh({{1, 1, 0}, {3, 1, 0}, {1, 3, 0}}, {{0, 1, 2}});
    support::eNode first = MeshNode(root, "first", corner).Material(rain);
    root.Child("second").Property("Poly").Material(rain).SameObject(first);
    eMeshRun run(scene);
    const eFileMesh mesh = run.Mesh("head");
    EXPECT_EQ(mesh.vertexCount, 3U);
    EXPECT_EQ(mesh.bounds.pmin, (host::Point3{0, -4, 0}));
    EXPECT_EQ(mesh.bounds.pmax, (host::Point3{1, 2, 9}));
    const eFileMesh shown = run.Mesh("first");  // by its box, v from above
    EXPECT_EQ(VertexAt(shown, {1, 1, 0}).uv0, (host::Point2{0, 1}));
    EXPECT_EQ(VertexAt(shown, {3, 1, 0}).uv0, (host::Point2{1, 1}));
    EXPECT_EQ(VertexAt(shown, {1, 3, 0}).uv0, (host::Point2{0, 0}));
    EXPECT_THAT(run.Messages(), ElementsAre(HasSubstr("треугольников 1 из"),
                                            HasSubstr("вырожденные треугольники в мэше 'head'"),
                                            HasSubstr("в материале 'rain'")));
    run.SetOptions([](eExportOptions& options) { options.exportMesh = 0; });
    run.Do();
    EXPECT_THAT(run.Messages(), IsEmpty()) << "meshes are switched off";
}

// A node whose material notes when it is updated.
class eUpdatedNode : public eSceneNode {
public:
    using eSceneNode::eSceneNode;

    std::vector<int> updated;

    host::Mtl* GetMtl() const override { return const_cast<eNotingMaterial*>(&material); }

private:
    class eNotingMaterial : public DumMtl {
    public:
        explicit eNotingMaterial(std::vector<int>& ownTimes) : DumMtl({1, 1, 1}), times(ownTimes) {}
        void Update(host::TimeValue t, host::Interval&) override { times.push_back(t); }

    private:
        std::vector<int>& times;
    };

    eNotingMaterial material{updated};
};

// Catches a material that does not know the time at which its mesh is read.
TEST(WholeMesh, TheMaterialIsUpdatedForTheFrame) {
    support::eSceneBuilder scene;
    scene.Node("hat").Property("Model=units/tank").Object(eMeshObject{TexturedTriangle(), {}});
    eMeshReading reading(scene);
    eScene fake(scene.Build());
    eUpdatedNode node(fake, fake.data.nodes[0], 0);
    node.SetRenderData(std::make_unique<Export::eRenderData>(0));
    reading.Slot("hat").node = &node;
    ExtractMesh(reading.run, node, 3 * 160, nullptr);
    EXPECT_THAT(node.updated, ElementsAre(3 * 160));
}

}  // namespace
