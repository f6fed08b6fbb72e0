#include <gmock/gmock.h>

#include "support/gltf_scene.h"
#include "support/source_tree.h"

namespace {

using namespace standalone;
using namespace support;
using testing::ElementsAre;

// The triangles of all meshes as a sorted list: corners with position, coordinates and the strongest bone,
// from the least corner on. Those without area, which a packer may drop, are left out.
std::vector<std::string> TrianglesOf(const eSceneData& scene) {
    std::vector<std::string> triangles;
    for (const eObjectData& object : scene.objects) {
        const auto* shown = std::get_if<eMeshObject>(&object.kind);
        const std::size_t faces = shown == nullptr ? 0 : shown->mesh.faces.size();
        for (std::size_t face = 0; face < faces; ++face) {
            std::array<std::string, 3> corners;
            for (std::size_t i = 0; i < 3; ++i) {
                std::ostringstream text;
                const std::uint32_t v = shown->mesh.faces[face].v[i];
                const host::Point3& p = shown->mesh.verts[v];
                text << p.x << ' ' << p.y << ' ' << p.z;
                for (const host::MapChannel& map : shown->mesh.maps) {
                    const host::Point3& uv = map.verts[map.faces[face].t[i]];
                    text << ' ' << map.channel << ' ' << uv.x << ' ' << uv.y;
                }
                for (const eModifierKind& modifier : object.modifiers) {
                    const auto& skin = std::get<eSkinModifier>(modifier);
                    std::map<int, float> weights;
                    for (std::uint32_t w = skin.firstWeight[v]; w < skin.firstWeight[v + 1]; ++w) {
                        weights[skin.weights[w].bone] = skin.weights[w].weight;
                    }
                    for (const auto& [bone, weight] : weights) {
                        text << ' ' << bone << ':' << weight;
                    }
                }
                corners[i] = text.str();
            }
            if (corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0]) {
                std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
                triangles.push_back(corners[0] + " | " + corners[1] + " | " + corners[2]);
            }
        }
    }
    std::ranges::sort(triangles);
    return triangles;
}

// A skinned square that moves, plain and as packers have it.
std::string SquareAs(const std::string& form) {
    std::ifstream file(SourceTree() / "fuzz/corpus/gltf" / form, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Would catch a stream that is decoded in the wrong mode, type or order, an accessor that still reads the
// packed bytes, and influences that are mixed up with those of other vertices.
TEST(GltfPacked, ScenesAreThoseOfThePlainFile) {
    const eSceneData plain = SceneOf(SquareAs("plain"));
    ASSERT_EQ(TrianglesOf(plain).size(), 2U);
    for (const char* form : {"packed_meshopt", "packed_draco"}) {
        const eSceneData scene = SceneOf(SquareAs(form));
        EXPECT_EQ(TrianglesOf(scene), TrianglesOf(plain)) << form;
        EXPECT_EQ(NodeNamed(scene, "b").keys, NodeNamed(plain, "b").keys) << form;
    }
}

// Would catch a broken stream that is taken for data, and one that is believed before it is held against its
// size.
TEST(GltfPacked, BrokenStreamsAreTold) {
    const auto problems = [](std::string file, const std::string& piece, const std::string& with) {
        const std::size_t place = file.find(piece);
        EXPECT_NE(place, std::string::npos) << piece;
        file.replace(place, piece.size(), with);
        return ProblemsOf(Import(file));
    };
    const std::string meshopt = SquareAs("packed_meshopt"), draco = SquareAs("packed_draco");
    const std::string isNotMeshopt = "the bytes are not what EXT_meshopt_compression makes of data\n";
    EXPECT_EQ(problems(meshopt, "\"count\":12,\"mode\":\"A", "\"count\":99,\"mode\":\"A"),
              "/bufferViews/0: " + isNotMeshopt);
    EXPECT_EQ(problems(meshopt, "\"byteStride\":4", "\"byteStride\":5"), "/bufferViews/0: " + isNotMeshopt);
    EXPECT_EQ(problems(meshopt, "\"EXT_meshopt_compression\":{\"buffer\"",
                       "\"EXT_meshopt_comprssions\":{\"buffer\""),
              "/bufferViews/0: the bytes are in no buffer, and this program doesn't unpack them\n");
    const std::string isNotDraco =
        "/meshes/0/primitives/0: the bytes are not what KHR_draco_mesh_compression makes of the mesh\n";
    EXPECT_EQ(problems(draco, "DRACO", "DRACE"), isNotDraco);
    EXPECT_EQ(problems(draco, "\"POSITION\":1,", "\"POSITION\":9,"), isNotDraco);
}

}  // namespace
