#include "gltf/mesh_nodes.h"

#include <algorithm>

#include "base/ansi.h"
#include "base/number_text.h"
#include "gltf/primitive.h"
#include "inspect/model_view.h"
#include "mesh/strips/sub_mesh.h"
#include "messages/utf8_words.h"

namespace gltf {

namespace {

constexpr char kLevels[] = "MSFT_lod";

int LevelOf(const inspect::eSdlBlock& view) {
    return ReadInteger(view.ValueOf("lod"));
}

}  // namespace

eMeshNodes::eMeshNodes(eGlb& glb, eModelFiles& files, const eBoneNodes& bones, eMaterials& materials)
    : glb_(glb), files_(files), bones_(bones), materials_(materials), shapes_(files) {}

bool eMeshNodes::Add(eBoneNodes& bones, eBilingual& problem) {
    for (std::size_t i = 0; i < files_.model.bones.size() && problem.IsEmpty(); ++i) {
        const written::eWrittenBone& bone = files_.model.bones[i];
        const std::vector<const inspect::eSdlBlock*> views = bone.block->Blocks("view");
        std::vector<int> levels;
        for (std::size_t v = 0; v < views.size(); ++v) {
            const int node = MeshNode(static_cast<int>(i), *views[v], bone.views[v], problem);
            if (node >= 0) {
                levels.push_back(node);
            }
        }
        Place(bones, static_cast<int>(i), levels);
    }
    return problem.IsEmpty();
}

int eMeshNodes::MeshNode(int bone, const inspect::eSdlBlock& view, const std::string& reference,
                         eBilingual& problem) {
    const eFileMesh* const mesh = files_.MeshOf(reference);
    const int number = mesh != nullptr ? Mesh(reference, *mesh, problem) : -1;
    if (number < 0) {
        return -1;
    }
    const int level = LevelOf(view);
    const std::string suffix = level > 0 ? " mesh, level " + std::to_string(level) : " mesh";
    eJson node{{"name", ToUtf8(files_.model.bones[static_cast<std::size_t>(bone)].name) + suffix},
               {"mesh", number}};
    if (mesh->skinned) {
        node["skin"] = Skin(bone, *mesh);
    } else if (bones_.IsHidden(bone)) {
        node["scale"] = {0, 0, 0};
    }
    node["extras"] = {{"kind", "mesh"},
                      {"bone", ToUtf8(files_.model.bones[static_cast<std::size_t>(bone)].name)},
                      {"mesh", ToUtf8(reference)},
                      {"level", level}};
    for (const inspect::eSdlBlock* block : view.Blocks()) {
        inspect::AddBlock(node["extras"], *block);
    }
    nodes_.push_back({glb_.Add("nodes", std::move(node)), bone, mesh});
    return nodes_.back().node;
}

// The way to a material begins at the folder of the model for which the mesh was written: this one, or for a
// mesh that several models share, another beside whose materials it lies.
written::ePlacedName eMeshNodes::PlaceOf(const std::string& material, const eName& meshFolder) {
    const written::ePlacedName place = written::Resolve(files_.folder, material);
    return materials_.Has(place) ? place : written::ePlacedName{meshFolder, place.name};
}

int eMeshNodes::Mesh(const std::string& reference, const eFileMesh& mesh, eBilingual& problem) {
    const auto [entry, isNew] = meshes_.try_emplace(&mesh, -1);
    if (!isNew) {
        return entry->second;
    }
    const written::ePlacedName place = written::Resolve(files_.folder, reference);
    const eMeshShapes* const shapes = shapes_.Of(mesh);
    eJson primitives = eJson::array();
    for (const eFileSubMesh& subMesh : mesh.subMeshes) {
        if (subMesh.triangleCount == 0) {
            continue;
        }
        const eMaterialLook look{.isTwoSided = (subMesh.flags & kSubMeshTwoSided) != 0,
                                 .isLit = !HasBakedLight(mesh, subMesh)};
        const int material = materials_.Material(PlaceOf(subMesh.material, place.folder), look, problem);
        primitives.push_back(MakePrimitive(glb_, mesh, subMesh, shapes, materials_.HasNormalMap(material)));
        primitives.back()["material"] = material;
        triangles_ += subMesh.triangleCount;
    }
    if (primitives.empty()) {
        return -1;
    }
    eJson entryOfMesh{{"name", ToUtf8(mesh.name)}, {"primitives", primitives}};
    if (shapes != nullptr) {
        entryOfMesh["weights"] = std::vector<int>(shapes->shapes.size(), 0);
    }
    return entry->second = glb_.Add("meshes", std::move(entryOfMesh));
}

// The vertices lie in the space of the bone that shows them, at rest.
int eMeshNodes::Skin(int bone, const eFileMesh& mesh) {
    eJson joints = eJson::array({bone});
    for (const std::string& name : mesh.bones) {
        const int number = bones_.NumberOf(name);
        if (number < 0) {
            files_.warnings.push_back(Utf8Words(ePhrase::LacksSkinBone, ToUtf8(mesh.name), ToUtf8(name)));
        }
        joints.push_back(number < 0 ? bone : number);
    }
    std::vector<float> matrices;
    for (const eJson& joint : joints) {
        const host::DMatrix3 toJoint =
            written::Product(bones_.Rest(bone), written::ExactInverse(bones_.Rest(joint.get<int>())));
        for (std::size_t row = 0; row < 4; ++row) {
            for (const double value : toJoint.rows[row]) {
                matrices.push_back(static_cast<float>(value));
            }
            matrices.push_back(row == 3 ? 1.0F : 0.0F);
        }
    }
    return glb_.Add("skins", {{"inverseBindMatrices", glb_.AddFloats(matrices, 16, eBufferUse::Data)},
                              {"joints", joints}});
}

void eMeshNodes::Place(eBoneNodes& bones, int bone, const std::vector<int>& levels) {
    if (levels.empty()) {
        return;
    }
    if (glb_.At("nodes", levels.front()).contains("skin")) {
        atTop_.push_back(levels.front());
    } else {
        bones.AddChild(bone, levels.front());
    }
    if (levels.size() > 1) {
        glb_.Use(kLevels);
        glb_.At("nodes", levels.front())["extensions"][kLevels]["ids"] =
            std::vector<int>(levels.begin() + 1, levels.end());
    }
}

}  // namespace gltf
