#include "standalone/loaders/assimp/assimp_visibility.h"

#include <algorithm>
#include <set>

#include "standalone/loaders/assimp/assimp_nodes.h"
#include "standalone/loaders/assimp/assimp_takes.h"
#include "standalone/loaders/shared/hide_with_above.h"

namespace standalone {
namespace {

using eShowings = std::vector<eFbxShowing>;

// Null where the take leaves the node as it is.
const eShowings* ShowingsOf(const eAssimpTake& take, std::size_t model) {
    if (take.facts == nullptr) {
        return nullptr;
    }
    const auto found = take.facts->showings.find(model);
    return found == take.facts->showings.end() ? nullptr : &found->second;
}

// The take's changes at their frames, from its first frame on.
void AddKeys(const eAssimpImport& import, const eAssimpTake& take, const eShowings& showings,
             eNodeData& record) {
    std::vector<eVisibilityKey>& keys = record.visibilityKeys;
    const std::size_t start = keys.size();
    for (const eFbxShowing& showing : showings) {
        const double frame =
            WholeFrame((showing.seconds - take.facts->startSeconds) * import.framesPerSecond + take.shift);
        const float value = showing.isShown ? 1.0F : 0.0F;
        if (keys.size() == start || frame <= take.firstFrame) {
            keys.resize(start);
            keys.push_back({static_cast<double>(take.firstFrame), value});
        } else if (frame <= take.lastFrame) {
            keys.push_back({frame, value});
        }
    }
}

bool HidesWithAbove(const eAssimpNode& node) {
    return node.facts != nullptr && node.facts->hidesWithAbove;
}

void SetOwnVisibility(eAssimpImport& import, int node, std::size_t model) {
    eNodeData& record = import.RecordOf(node);
    const auto hidesWithAbove = [&](int below) { return HidesWithAbove(import.NodeOf(below)); };
    record.visibility = import.fbx->models[model].visibility < 0.5 ? 0.0F : 1.0F;
    for (eAssimpTake& take : import.takes) {
        if (const eShowings* showings = ShowingsOf(take, model)) {
            AddKeys(import, take, *showings, record);
            AddHiddenWith(import.scene, node, hidesWithAbove, take.moved);
        } else {
            record.visibilityKeys.push_back({static_cast<double>(take.firstFrame), record.visibility});
        }
    }
    std::vector<eVisibilityKey>& keys = record.visibilityKeys;
    const auto isIdle = [](const eVisibilityKey& before, const eVisibilityKey& key) {
        return before.value == key.value;
    };
    keys.erase(std::unique(keys.begin(), keys.end(), isIdle), keys.end());
}

std::set<std::size_t> MovedModels(const eAssimpImport& import) {
    std::set<std::size_t> moved;
    for (const eAssimpTake& take : import.takes) {
        if (take.facts != nullptr) {
            for (const auto& [model, showings] : take.facts->showings) {
                moved.insert(model);
            }
        }
    }
    return moved;
}

}  // namespace

void SetAssimpVisibility(eAssimpImport& import) {
    if (import.fbx == nullptr) {
        return;
    }
    const std::set<std::size_t> moved = MovedModels(import);
    for (const int number : ParentsFirst(import)) {
        const eAssimpNode& node = import.NodeOf(number);
        if (node.facts == nullptr) {
            continue;
        }
        const auto model = static_cast<std::size_t>(node.facts - import.fbx->models.data());
        if (moved.contains(model)) {
            SetOwnVisibility(import, number, model);
        }
        if (node.parent >= 0 && HidesWithAbove(node)) {
            HideWithAbove(import.RecordOf(node.parent), import.RecordOf(number));
        }
    }
}

}  // namespace standalone
