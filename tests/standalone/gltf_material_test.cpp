#include <gmock/gmock.h>

#include <cmath>

#include "base/ansi.h"
#include "platform/folder.h"
#include "support/gltf_scene.h"
#include "support/temp_folder.h"

namespace {

using namespace standalone;
using namespace support;
using testing::ElementsAre;

const std::string kPng("\x89PNG\r\n\x1A\n and so on");

template <class Kind>
const Kind& MaterialAs(const eSceneData& scene, int number) {
    return std::get<Kind>(scene.materials.at(static_cast<std::size_t>(number)).kind);
}

const eMapData& MapAt(const eSceneData& scene, const eMapSlot& slot) {
    return scene.maps.at(static_cast<std::size_t>(slot.map));
}

// Would catch a factor or map in the wrong place, an alpha mode that is not wrapped, extras that are no
// parameters, and a wrapper that nobody asked for.
TEST(GltfMaterials, FactorsMapsAndModesFindTheirPlaces) {
    eGltfText file;
    file.Section("images", R"([{"uri": "art/a%20b+c.png"}, {"uri": "n.png"}])");
    file.Section("textures", R"([{"source": 0, "name": "colour"}, {"source": 1}])");
    file.Section("materials", R"([
        {"name": "full", "doubleSided": true, "pbrMetallicRoughness": {"baseColorFactor": [1, 0.5, 0, 0.25],
            "baseColorTexture": {"index": 0, "texCoord": 2}}, "normalTexture": {"index": 1, "scale": 0.75}},
        {"name": "net", "alphaMode": "MASK"}, {"name": "glass", "alphaMode": "BLEND"},
        {"name": "chrome", "extras": {"environment": true, "strength": 0.5, "blend": 3, "surface": "metal"}},
        {"extras": {"surface": "metal"}}])");
    const eSceneData scene = SceneOf(file.Text());
    ASSERT_EQ(scene.materials.size(), 8U);
    const auto& full = MaterialAs<eStandardMaterial>(scene, 0);
    EXPECT_EQ(full.diffuse, (host::Color{1, 0.5F, 0}));
    EXPECT_EQ(full.opacity, 0.25F);
    EXPECT_TRUE(full.twoSided);
    EXPECT_EQ(MapAt(scene, full.maps[1]).name, "colour");
    EXPECT_EQ(MapAt(scene, full.maps[1]).coordinates.channel, 3);
    EXPECT_EQ(std::get<eBitmapMap>(MapAt(scene, full.maps[1]).kind).file, "art/a b+c.png");
    EXPECT_EQ(std::get<eBitmapMap>(MapAt(scene, full.maps[1]).kind).onDisk, "");
    EXPECT_EQ(full.maps[8].amount, 0.75F);
    const int normal = std::get<eNormalBumpMap>(MapAt(scene, full.maps[8]).kind).normal;
    EXPECT_EQ(std::get<eBitmapMap>(scene.maps[static_cast<std::size_t>(normal)].kind).file, "n.png");

    EXPECT_EQ(MaterialAs<eSorrelMaterial>(scene, 2), (eSorrelMaterial{.material = 1, .blend = 1}));
    EXPECT_EQ(scene.materials[2].name, "net");
    EXPECT_EQ(MaterialAs<eSorrelMaterial>(scene, 4), (eSorrelMaterial{.material = 3, .blend = 2}));
    EXPECT_EQ(MaterialAs<eSorrelMaterial>(scene, 6),
              (eSorrelMaterial{.material = 5, .blend = 3, .environment = 1, .strength = 0.5F}));
    EXPECT_EQ(scene.materials[7].name, "material_4");
    EXPECT_TRUE(MaterialAs<eStandardMaterial>(scene, 7).maps == eMapSlots{});
}

// What the host makes of coordinates whose v runs up: scaled, turned counter-clockwise, moved.
host::Point2 HostTransform(const eMapCoordinates& c, host::Point2 p) {
    const float angle = c.angle * 3.14159265F / 180;
    const host::Point2 scaled{p.x * c.tiling.x, p.y * c.tiling.y};
    return {std::cos(angle) * scaled.x - std::sin(angle) * scaled.y + c.offset.x,
            std::sin(angle) * scaled.x + std::cos(angle) * scaled.y + c.offset.y};
}

// Would catch a texture that turns the wrong way or about the wrong corner: the coordinates that an exporter
// writes, with v down again, must be those that the file's own transform gives.
TEST(GltfMaterials, TextureTransformsGiveTheFilesCoordinates) {
    eGltfText file;
    file.Section("images", R"([{"uri": "a.png"}])");
    file.Section("textures", R"([{"source": 0}])");
    file.Section("materials",
                 R"([{"pbrMetallicRoughness": {"baseColorTexture": {"index": 0, "texCoord": 1, "extensions":
        {"KHR_texture_transform": {"offset": [0.3, -0.2], "rotation": 0.4, "scale": [1.5, 0.5], "texCoord": 0}}}}}])");
    const eSceneData scene = SceneOf(file.Text());
    const eMapCoordinates& coordinates = scene.maps.at(0).coordinates;
    EXPECT_EQ(coordinates.channel, 1);
    const float c = std::cos(0.4F), s = std::sin(0.4F);
    for (const host::Point2& uv : {host::Point2{0, 0}, host::Point2{1, 0}, host::Point2{0.25F, 0.75F}}) {
        // The file's: counter-clockwise as one looks at the picture, whose v runs down.
        const host::Point2 wanted{0.3F + c * 1.5F * uv.x + s * 0.5F * uv.y,
                                  -0.2F - s * 1.5F * uv.x + c * 0.5F * uv.y};
        const host::Point2 found = HostTransform(coordinates, {uv.x, 1 - uv.y});
        EXPECT_NEAR(found.x, wanted.x, 1e-5);
        EXPECT_NEAR(1 - found.y, wanted.y, 1e-5);
    }
}

// The texture of material 0 on disk, and what is in it.
std::string ImageOnDisk(const eSceneData& scene) {
    const eMapSlot& slot = MaterialAs<eStandardMaterial>(scene, 0).maps[1];
    return std::get<eBitmapMap>(MapAt(scene, slot).kind).onDisk;
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Would catch embedded images without their own name and type, names that leave the folder or meet, and files
// that are gone before the scene or stay behind it.
TEST(GltfMaterials, EmbeddedImagesLiveAsLongAsTheScene) {
    eGltfText file;
    const int view = file.View(kPng);
    const std::string inBuffer =
        ", \"mimeType\": \"image/jpeg\", \"bufferView\": " + std::to_string(view) + "}";
    file.Section("images", "[{\"name\": \"../Wall\"" + inBuffer + ", {\"name\": \".._wall.PNG\"" + inBuffer +
                               ", {\"uri\": \"data:image/jpeg;base64," + Base64("\xFF\xD8\xFFjpeg") +
                               "\"}, {\"uri\": \"data:image/gif;base64," + Base64("GIF89a") + "\"}]");
    file.Section("textures", R"([{"source": 0}, {"source": 1}, {"source": 2}, {"source": 3}])");
    std::string materials;
    for (const char* texture : {"0", "1", "2", "3", "0"}) {
        materials += std::string(materials.empty() ? "[" : ", ") +
                     R"({"pbrMetallicRoughness": {"baseColorTexture": {"index": )" + texture + "}}}";
    }
    file.Section("materials", materials + "]");
    eSceneData scene = SceneOf(file.Binary());
    std::vector<std::string> names;
    for (const eMapData& map : scene.maps) {
        names.push_back(std::get<eBitmapMap>(map.kind).file);
    }
    EXPECT_THAT(names,
                ElementsAre(".._Wall.png", ".._wall_2.png", "image_2.jpg", "image_3.gif", ".._Wall.png"));
    const std::string path = ImageOnDisk(scene);
    EXPECT_THAT(path, testing::EndsWith("/.._Wall.png"));
    EXPECT_EQ(ReadFile(path), kPng);
    eSceneData copy = scene;
    scene = {};
    EXPECT_TRUE(platform::Exists(path, platform::ePathForm::Native));
    copy = {};
    EXPECT_FALSE(platform::Exists(path, platform::ePathForm::Native));
    EXPECT_FALSE(platform::Exists(path.substr(0, path.rfind('/')), platform::ePathForm::Native));
}

// Would catch files beside the scene that are not found because of their names, pictures that the export
// can't reach or takes for new in every run, and buffers refused because they are longer than told.
TEST(GltfMaterials, FilesBesideTheSceneAreUsedAsTheyAre) {
    const eTempFolder folder;
    folder.Write("модель/picture❤.png", kPng);
    const auto time = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(folder / "модель/picture❤.png", time);
    folder.Write("модель/a b+.bin", std::string("\0\0\x80\x3F\0\0\0\x40\0\0\x40\x40 and more", 21));
    const std::string text = R"({"asset": {"version": "2.0"},
        "buffers": [{"uri": "a%20b+.bin", "byteLength": 12}],
        "bufferViews": [{"buffer": 0, "byteLength": 12}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "count": 1, "type": "VEC3"}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "mode": 1}]}],
        "images": [{"uri": "picture%E2%9D%A4.png"}], "textures": [{"source": 0}],
        "materials": [{"pbrMetallicRoughness": {"baseColorTexture": {"index": 0}}}]})";
    const std::string path = folder / "модель/scene.gltf";
    const eLoadResult result = ImportGltf(path, text, {});
    ASSERT_TRUE(result.scene) << ProblemsOf(result);
    EXPECT_EQ(ToUtf8(result.scene->file), path);
    const std::string picture = ImageOnDisk(*result.scene);
    EXPECT_THAT(picture, testing::EndsWith("/picture_.png"));
    EXPECT_EQ(ReadFile(picture), kPng);
    EXPECT_EQ(std::filesystem::last_write_time(picture), time);
    EXPECT_EQ(std::filesystem::last_write_time(folder / "модель/picture❤.png"), time);

    std::string missing = text;
    missing.replace(missing.find("a%20b+"), 6, "nobody");
    const eLoadResult refused = ImportGltf(path, missing, {});
    EXPECT_EQ(ProblemsOf(refused), "/buffers/0: the buffer's file " + (folder / "модель/nobody.bin") +
                                       " can't be read: No such file or directory\n");
}

}  // namespace
