#include "gltf/bone_nodes.h"

#include <algorithm>

#include "base/ansi.h"
#include "inspect/model_view.h"
#include "messages/utf8_words.h"

namespace gltf {

namespace {

// What a node says of a bone by itself.
bool IsNode(const std::string& word) {
    constexpr const char* kWords[] = {"bone", "view", "matrix34", "Position", "orientation"};
    return std::ranges::find(kWords, word) != std::end(kWords);
}

}  // namespace

void PutPlacement(const ePlacement& placement, eJson& node) {
    const ePlacement none;
    if (placement.position != none.position) {
        node["translation"] = placement.position;
    }
    if (placement.rotation != none.rotation) {
        node["rotation"] = placement.rotation;
    }
    if (placement.scale != none.scale) {
        node["scale"] = placement.scale;
    }
}

void PutMatrix(const host::DMatrix3& matrix, eJson& node) {
    for (std::size_t row = 0; row < 4; ++row) {
        for (const double value : matrix.rows[row]) {
            node["matrix"].push_back(value);
        }
        node["matrix"].push_back(row == 3 ? 1 : 0);
    }
}

eBoneNodes::eBoneNodes(eGlb& glb, eModelFiles& files) : glb_(glb), files_(files) {
    for (const written::eWrittenBone& bone : files.model.bones) {
        eJson node = Describe(bone);
        const auto number = static_cast<int>(rest_.size());
        const ePlacement placement = Placement(number, bone.local);
        const bool isMoved = IsMoved(bone.name);
        const bool isWhole = placement.isSheared && !isMoved;
        const host::DMatrix3 local = isWhole ? bone.local : MatrixOf(placement);
        rest_.push_back(bone.above >= 0 ? written::Product(local, Rest(bone.above)) : local);
        if (isWhole) {
            PutMatrix(local, node);
        } else {
            PutPlacement(placement, node);
        }
        if (placement.isSheared && isMoved) {
            files.warnings.push_back(Utf8Words(ePhrase::ShearedBone, ToUtf8(bone.name)));
        }
        glb.Add("nodes", std::move(node));
        if (bone.above >= 0) {
            AddChild(bone.above, number);
        }
    }
}

bool eBoneNodes::IsMoved(const std::string& bone) const {
    return std::ranges::any_of(files_.clips, [&](const eClipFile& clip) {
        return std::ranges::find(clip.played.file.bones, bone) != clip.played.file.bones.end();
    });
}

eJson eBoneNodes::Describe(const written::eWrittenBone& bone) const {
    eJson extras{{"kind", "bone"}};
    if (const std::vector<std::string> words = bone.block->Values(); words.size() > 1) {
        extras["joint"] = ToUtf8(words.front());
    }
    for (const inspect::eSdlBlock* block : bone.block->Blocks()) {
        if (!IsNode(block->Name())) {
            inspect::AddBlock(extras, *block);
        }
    }
    return {{"name", ToUtf8(bone.name)}, {"extras", extras}};
}

ePlacement eBoneNodes::Placement(int bone, const host::DMatrix3& local) const {
    const bool isRoot = files_.model.bones[static_cast<std::size_t>(bone)].above < 0;
    return PlacementOf(isRoot ? written::Product(local, ToGltf()) : local);
}

bool eBoneNodes::IsHidden(int bone) const {
    return files_.model.bones[static_cast<std::size_t>(bone)].block->ValueOf("visibility") == "0";
}

}  // namespace gltf
