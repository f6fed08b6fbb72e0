#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <set>

#include "mesh/build/bone_palettes.h"
#include "mesh/mesh_run.h"
#include "mesh/read/extract_mesh.h"
#include "mesh/read/vertex_skin.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// The weights of three vertices, as a modifier would give them.
class eWeights : public host::ISkinContextData {
public:
    std::vector<std::pair<int, float>> ofVertex[3];

    int GetNumAssignedBones(int vertex) const override { return static_cast<int>(ofVertex[vertex].size()); }
    int GetAssignedBone(int vertex, int i) const override {
        return ofVertex[vertex][static_cast<std::size_t>(i)].first;
    }
    float GetBoneWeight(int vertex, int i) const override {
        return ofVertex[vertex][static_cast<std::size_t>(i)].second;
    }
};

// A vertex that has the influences, and what the reading makes known.
struct eReadVertex {
    std::vector<std::pair<int, float>> influences;
    int bonesPerVertex = 0;
    std::set<int> leftOutBones;
};

eReadVertex ReadVertex(const std::vector<std::pair<int, float>>& assigned, int boneCount = 255) {
    eWeights weights;
    weights.ofVertex[0] = assigned;
    std::vector<std::uint8_t> numbers(static_cast<std::size_t>(boneCount));
    std::iota(numbers.begin(), numbers.end(), std::uint8_t{1});
    eVertexSkinReader reader(weights, numbers, 3);
    eReadVertex result;
    eExportVertexSkin skin;
    reader.Read(0, skin, result.bonesPerVertex);
    for (int k = 0; k < kInfluencesPerCorner; ++k) {
        result.influences.emplace_back(skin.bones[k], skin.weights[k]);
    }
    result.leftOutBones = reader.LeftOutBones();
    return result;
}

// Catches a selection that is not the heaviest three, a sum that is not 1, an order of equal weights that
// hangs on the sort, and one bone with the layout of one.
TEST(VertexSkin, TheThreeHeaviestInfluencesStay) {
    EXPECT_THAT(ReadVertex({{4, 0.25F}, {5, 0.5F}, {6, 0.125F}, {7, 0.75F}, {8, 0.5F}}).influences,
                ElementsAre(Pair(8, 0.75F / 1.75F), Pair(6, 0.5F / 1.75F), Pair(9, 0.5F / 1.75F)));
    EXPECT_EQ(ReadVertex({{4, 0.25F}, {5, 0.5F}, {6, 0.25F}}).bonesPerVertex, 3);
    const eReadVertex vertex = ReadVertex({{0, 0.5F}});
    EXPECT_THAT(vertex.influences, ElementsAre(Pair(1, 1.0F), Pair(0, 0.0F), Pair(0, 0.0F)));
    EXPECT_EQ(vertex.bonesPerVertex, 2);
}

// Catches divisions by nothing, and numbers that are none in the order of weights or in the file.
TEST(VertexSkin, WorthlessWeightsLeaveTheCornerWithoutBones) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    EXPECT_THAT(ReadVertex({}).influences, ElementsAre(Pair(0, 1.0F), Pair(0, 0.0F), Pair(0, 0.0F)));
    EXPECT_THAT(ReadVertex({{1, 0.0005F}, {2, 0.0009F}}).influences,
                ElementsAre(Pair(0, 0.0F), Pair(0, 0.0F), Pair(0, 0.0F)));
    EXPECT_THAT(ReadVertex({{1, nan}, {2, infinite}, {3, 0.5F}}).influences,
                ElementsAre(Pair(4, 1.0F), Pair(0, 0.0F), Pair(0, 0.0F)));
    EXPECT_EQ(ReadVertex({{1, 0}}).bonesPerVertex, 0);
}

// Catches bone numbers that the table of the file lacks.
TEST(VertexSkin, BonesOutsideTheTableAreLeftOut) {
    const eReadVertex vertex = ReadVertex({{2, 0.75F}, {1, 0.25F}, {-1, 0.5F}}, 2);
    EXPECT_THAT(vertex.influences, ElementsAre(Pair(2, 1.0F), Pair(0, 0.0F), Pair(0, 0.0F)));
    EXPECT_THAT(vertex.leftOutBones, ElementsAre(-1, 2));
}

void AddFaceWithBones(eExportMesh& mesh, std::initializer_list<int> numbers) {
    const auto first = static_cast<std::uint32_t>(mesh.vertexSkins.size());
    mesh.faces.push_back({.v = {first, first + 1, first + 2}});
    auto number = numbers.begin();
    for (int corner = 0; corner < 3; ++corner) {
        for (std::uint8_t& bone : mesh.vertexSkins.emplace_back().bones) {
            bone = static_cast<std::uint8_t>(number == numbers.end() ? *numbers.begin() : *number++);
        }
    }
}

// Catches a pass that stops at the first face that does not fit, and a limit of 24 or 26.
TEST(BonePalettes, ALaterFaceThatFitsStillGoesIn) {
    eExportBone bone;
    for (const auto& numbers :
         std::initializer_list<std::initializer_list<int>>{{0, 1, 2, 3, 4, 5, 6, 7, 8},
                                                           {9, 10, 11, 12, 13, 14, 15, 16, 17},
                                                           {18, 19, 20, 21, 22},  // 23 in use
                                                           {23, 24, 25},          // no room
                                                           {23},
                                                           {24},
                                                           {1, 9, 24}}) {
        AddFaceWithBones(bone.mesh, numbers);
    }
    BuildBonePalettes(bone);
    EXPECT_THAT(bone.mesh.facePalettes, ElementsAre(0, 0, 0, 1, 0, 0, 0));
    EXPECT_EQ(bone.palettes[0].count, 25);
    EXPECT_EQ(bone.palettes[1].count, 3);
    EXPECT_EQ(bone.palettes[1].entries[0], 23);
}

// A triangle below the parent that follows a bone, below the root, which has moved up by 1 since the bind
// pose.
support::eNode MovedSkin(support::eNode root, support::eNode parent, const std::string& name) {
    support::eNode node = MeshNode(parent, name, TexturedTriangle());
    support::eNode bone = root.Child(name + "_bone").Object(eHelperObject{});
    bone.Key({.frame = 0, .position = host::Point3{0, 0, 0}});
    bone.Key({.frame = 10, .position = host::Point3{0, 0, 1}});
    return node.Skin({bone}, {{{0, 1}}, {{0, 1}}, {{0, 1}}});
}

float HeightOf(const char* property) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene);
    support::eNode node = MovedSkin(root, root, "hat");
    if (*property != '\0') {
        node.Property(property);
    }
    eMeshReading reading(scene);
    reading.host.SetCommandPanelTaskMode(5);
    eExportBone& bone = reading.Slot("hat");
    ExtractMesh(reading.run, *bone.node, 10 * reading.host.GetTicksPerFrame(), nullptr);
    EXPECT_EQ(reading.host.GetCommandPanelTaskMode(), 5);
    const auto& stack = dynamic_cast<const host::IDerivedObject&>(*bone.node->GetObjectRef());
    EXPECT_EQ(stack.GetModifier(0)->AnimatableFlags() & host::Modifier::kDisabledFlag, 0U);
    return bone.mesh.frames[0].positions[0].z;
}

// Catches a skinned mesh that comes out deformed, a modifier or panel left as the reading needs it, and the
// two ways round it.
TEST(Skin, TheMeshComesInItsRestPose) {
    EXPECT_EQ(HeightOf(""), 0);
    EXPECT_EQ(HeightOf("OldSkin"), 1);
    EXPECT_EQ(HeightOf("NoSkin"), 1);
}

// Catches a table that wraps at 8 bits, faces without their table, and advice that leads astray behind it.
TEST(Skin, TooManyBonesAreTold) {
    support::eSceneBuilder scene;
    support::eNode node = MeshNode(Model(scene), "hat", TexturedTriangle());
    std::vector<support::eNode> bones;
    for (int i = 0; i < 256; ++i) {
        bones.push_back(node.Child("b" + std::to_string(i)).Object(eHelperObject{}));
    }
    node.Skin(bones, {{{0, 1}}, {{0, 1}}, {{0, 1}}});
    bones[0].Child("copy").Property("Poly").Property("Mesh=hat").Object(eHelperObject{});
    eMeshRun run(scene);
    EXPECT_THAT(run.Messages(),
                ElementsAre("Ошибка: Слишком много костей для скиннинга мэша 'hat'",
                            "Ошибка: Кость 'copy' показывает мэш кости 'hat', но этот мэш не записан: "
                            "причина указана выше."));
    EXPECT_EQ(run.Bone("hat").mesh.skinBones.size(), 255U);
    EXPECT_FALSE(run.Has("units/tank/.mesh"));
}

// Catches a group that mixes skinned and rigid parts the wrong way: the skin is lost, or a record is missing.
TEST(Skin, PartsWithoutSkinInASkinnedGroupFollowNoBone) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene);
    support::eNode head = MovedSkin(root, root, "hat").GroupHead();
    head.Child("feather").GroupMember().Object(eMeshObject{support::GridMesh(1, 1), {}});
    eMeshRun run(scene);
    EXPECT_THAT(run.Messages(),
                ElementsAre("Advice: Мэш 'feather' без скина входит в скиновый мэш 'hat': его вершины не "
                            "следуют за костями.\nНеобходимо добавить ему скин с теми же костями."));
    const eFileMesh mesh = run.Mesh("hat");
    EXPECT_TRUE(mesh.skinned);
    EXPECT_EQ(mesh.indices.size(), 9U);
    EXPECT_EQ(run.Faces("hat").vertexSkins.size(), run.Soup("hat").positions.size());
}

// Catches a skinned part that goes into a mesh without bone table.
TEST(Skin, ASkinnedPartOfAGroupWithoutSkinIsLeftOut) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene);
    support::eNode head = MeshNode(root, "hat", TexturedTriangle()).GroupHead();
    MovedSkin(root, head, "feather").GroupMember();
    eMeshRun run(scene);
    EXPECT_EQ(run.Messages().front(), "Ошибка: Скиновый мэш в нескиновой группе!");
    EXPECT_FALSE(run.Mesh("hat").skinned);
    EXPECT_EQ(run.Mesh("hat").indices.size(), 3U);
}

// Catches a part on the bones that stand in its skin's places in another skin, a part before its mesh that
// has no bones, and influences that are lost without their names.
TEST(Skin, EachPartFollowsTheBonesOfItsOwnSkin) {
    for (const bool sleeveIsFirst : {true, false}) {
        support::eSceneBuilder scene;
        support::eNode root = Model(scene);
        std::vector<support::eNode> bones;
        for (const char* name : {"b0", "b1", "b2", "b3"}) {
            bones.push_back(root.Child(name).Object(eHelperObject{}));
        }
        support::eNode first = root.Child(sleeveIsFirst ? "sleeve" : "coat");
        support::eNode second = (sleeveIsFirst ? root : first).Child(sleeveIsFirst ? "coat" : "sleeve");
        support::eNode& coat = (sleeveIsFirst ? second : first).Property("Poly");
        coat.Object(eMeshObject{TexturedTriangle(), {}});
        coat.Skin({bones[0], bones[1], bones[2]}, {{{1, 1}}, {{1, 1}}, {{1, 1}}});
        support::eNode& sleeve = (sleeveIsFirst ? first : second).Property("CommonMesh=coat");
        sleeve.Position(5, 0, 0).Object(eMeshObject{TexturedTriangle(), {}});
        sleeve.Skin({bones[2], bones[3], bones[0]}, {{{2, 1}}, {{2, 1}}, {{0, 0.5F}, {1, 0.5F}}});
        eMeshRun run(scene);
        EXPECT_THAT(run.Messages(),
                    ElementsAre("Ошибка: Скин узла 'sleeve' ссылается на кости, которых нет в скине 'coat': "
                                "'b3'. Их веса не записаны.\nНеобходимо добавить эти кости в скин 'coat'."));
        const eFileMesh mesh = run.Mesh("coat");
        std::set<std::string> followed;
        for (std::size_t v = 0; v < mesh.vertexCount; ++v) {
            const eExportVertex vertex = mesh.Vertex(mesh.subMeshes[0], v);
            const int bone = mesh.subMeshes[0].palette[vertex.boneIndices[0]];
            followed.insert(std::to_string(std::lround(vertex.position.x)) + "," +
                            std::to_string(std::lround(vertex.position.y)) + " " +
                            mesh.bones[static_cast<std::size_t>(bone - 1)]);
        }
        EXPECT_THAT(followed, ElementsAre("0,0 b1", "0,2 b1", "2,0 b1", "5,0 b0", "5,2 b2", "7,0 b0"));
    }
}

// Catches bones that the game does not find, told without their reason, and the shape of a hidden bone that
// gets into the game unseen.
TEST(Skin, BonesThatTheSkeletonLacksAreTold) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene);
    support::eNode hips = root.Child("hips").Object(eHelperObject{}).Hidden();
    support::eNode coat = MeshNode(root, "coat", TexturedTriangle()).GroupHead();
    support::eNode knob = coat.Child("knob").GroupMember().Hidden();
    knob.Object(eMeshObject{TexturedTriangle(), {}});
    support::eNode other = scene.Node("other").Property("Model=units/other").Object(eHelperObject{});
    const std::vector bones = {root, hips.Child("leg").Object(eHelperObject{}), knob, other,
                               root.Child("zone").Property("Area").Object(eHelperObject{})};
    coat.Skin(bones, {{{0, 1}}, {{1, 1}}, {{2, 1}}});
    eMeshRun run(scene);
    EXPECT_THAT(run.Messages(),
                AllOf(Contains("Ошибка: Скин мэша 'coat' содержит кости, которых нет в скелете:\n"
                               "'leg': кость 'hips' скрыта.\n'knob': она входит в группу 'coat'.\n"
                               "'other': она находится вне модели 'root'.\n"
                               "'zone': она не является отдельной костью."),
                      Contains("Advice: Кость 'knob' скина 'coat' скрыта, но входит в его группу, и ее "
                               "геометрия записана в мэш.\nНеобходимо вынести кость из группы.")));
}

// Catches sub-meshes that see more than 25 bones, and palettes that lead to other bones than the weights.
TEST(Skin, AMeshOfManyBonesIsDividedByPalettes) {
    support::eSceneBuilder scene;
    constexpr int kBones = 60;
    support::eNode node = MeshNode(Model(scene), "hat", support::GridMesh(kBones, 1));
    std::vector<support::eNode> bones;
    std::vector<std::vector<eSkinWeight>> weights;
    for (int i = 0; i <= kBones; ++i) {
        bones.push_back(node.Child("b" + std::to_string(i)).Object(eHelperObject{}));
    }
    for (int v = 0; v < 2 * (kBones + 1); ++v) {
        const int column = v % (kBones + 1);
        weights.push_back({{column, 0.75F}, {(column + 1) % kBones, 0.25F}});
    }
    node.Skin(bones, weights);
    eMeshRun run(scene);
    const eFileMesh mesh = run.Mesh("hat");
    EXPECT_GE(mesh.subMeshes.size(), 3U);
    for (const eFileSubMesh& subMesh : mesh.subMeshes) {
        for (std::size_t i = subMesh.firstVertex; i < subMesh.firstVertex + subMesh.vertexCount; ++i) {
            const eExportVertex vertex = mesh.Vertex(subMesh, i);
            const int bone = subMesh.palette[vertex.boneIndices[0]];
            EXPECT_EQ(mesh.bones[static_cast<std::size_t>(bone - 1)],
                      "b" + std::to_string(static_cast<int>(vertex.position.x)));
            EXPECT_EQ(vertex.weights[0], 0.75F);
        }
    }
}

}  // namespace
