#include "gltf/materials.h"

#include <cstdlib>

#include "base/ansi.h"
#include "inspect/model_view.h"
#include "messages/utf8_words.h"
#include "platform/path_lookup.h"

namespace gltf {

namespace {

constexpr char kSpecular[] = "KHR_materials_specular";
constexpr char kUnlit[] = "KHR_materials_unlit";
constexpr double kRough = 0.9;
constexpr double kShiny = 0.45;

eJson TextureReference(int texture) {
    return {{"index", texture}};
}

// Of a colour in the form A R G B, red, green and blue from 0 to 1.
eJson ColorOf(const std::string& text) {
    const unsigned long argb = std::strtoul(text.c_str(), nullptr, 0);
    eJson color = eJson::array();
    for (const int shift : {16, 8, 0}) {
        color.push_back(static_cast<double>(argb >> shift & 0xFFU) / 255);
    }
    return color;
}

}  // namespace

eMaterials::eFile& eMaterials::FileIn(const eName& folder) {
    const auto [entry, isNew] = files_.try_emplace(folder);
    const eName path = folder / ".material";
    const auto content = isNew ? written::ReadWritten(path) : std::nullopt;
    if (content) {
        std::string broken;
        entry->second.text =
            inspect::ReadSdlTree(path, std::string(content->begin(), content->end()), broken);
        if (!broken.empty()) {
            entry->second.problem = eBilingual{broken, broken}.At(platform::DiskPath(path.Text()));
        }
    }
    return entry->second;
}

const inspect::eSdlBlock* eMaterials::BlockOf(const written::ePlacedName& place) {
    for (const inspect::eSdlBlock* block : FileIn(place.folder).text.Blocks()) {
        const std::vector<std::string> values = block->Values();
        if ((values.empty() ? std::string() : values.front()) == place.name) {
            return block;
        }
    }
    return nullptr;
}

void eMaterials::AddBlend(const inspect::eSdlBlock& block, eJson& material) const {
    const std::string blend = block.ValueOf("blend");
    if (blend == "test") {
        material["alphaMode"] = "MASK";
    } else if (!blend.empty() && blend != "none") {
        material["alphaMode"] = "BLEND";
    }
}

void eMaterials::AddSpecular(const eName& folder, const inspect::eSdlBlock& block, eJson& material) {
    const std::string picture = block.ValueOf("specular");
    const int texture = picture.empty() ? -1 : pictures_.Texture(folder, picture, ePictureUse::Specular);
    if (texture < 0) {
        return;
    }
    glb_.Use(kSpecular);
    material["pbrMetallicRoughness"]["roughnessFactor"] = kShiny;
    material["extensions"][kSpecular] = {{"specularTexture", TextureReference(texture)},
                                         {"specularColorFactor", ColorOf(block.ValueOf("color"))}};
}

eJson eMaterials::Describe(const eName& folder, const inspect::eSdlBlock& block) {
    eJson surface{{"metallicFactor", 0}, {"roughnessFactor", kRough}};
    const std::string diffuse = block.ValueOf("diffuse");
    const int color = diffuse.empty() ? -1 : pictures_.Texture(folder, diffuse, ePictureUse::Color);
    if (color >= 0) {
        surface["baseColorTexture"] = TextureReference(color);
    }
    eJson material{{"pbrMetallicRoughness", surface}};
    const std::string bump = block.ValueOf("bump");
    const int normals = bump.empty() ? -1 : pictures_.Texture(folder, bump, ePictureUse::Normals);
    if (normals >= 0) {
        material["normalTexture"] = TextureReference(normals);
    }
    AddSpecular(folder, block, material);
    AddBlend(block, material);
    material["extras"] = {{"type", ToUtf8(block.Name())}};
    for (const inspect::eSdlBlock* key : block.Blocks()) {
        inspect::AddBlock(material["extras"], *key);
    }
    return material;
}

int eMaterials::Material(const written::ePlacedName& place, const eMaterialLook& look, eBilingual& problem) {
    const std::string key = place.folder.Text() + "\n" + place.name + "\n" + (look.isTwoSided ? "2" : "1") +
                            (look.isLit ? "lit" : "");
    const auto [entry, isNew] = materials_.try_emplace(key, -1);
    if (!isNew) {
        return entry->second;
    }
    const inspect::eSdlBlock* const block = BlockOf(place);
    if (const eBilingual& broken = FileIn(place.folder).problem; !broken.IsEmpty()) {
        problem = broken;
    } else if (block == nullptr) {
        warnings_.push_back(Utf8Words(ePhrase::LacksMaterial, ToUtf8(place.name)));
    }
    eJson material{{"name", ToUtf8(place.name)}};
    material.update(block != nullptr ? Describe(place.folder, *block) : eJson::object());
    if (look.isTwoSided) {
        material["doubleSided"] = true;
    }
    if (!look.isLit) {
        glb_.Use(kUnlit);
        material["extensions"][kUnlit] = eJson::object();
    }
    return entry->second = glb_.Add("materials", std::move(material));
}

}  // namespace gltf
