#include "standalone/loaders/assimp/assimp_poses.h"

#include <algorithm>

#include "standalone/loaders/assimp/assimp_channel.h"
#include "standalone/loaders/assimp/assimp_nodes.h"
#include "standalone/loaders/assimp/assimp_space.h"

namespace standalone {
namespace {

constexpr std::size_t kMostKeys = std::size_t{1} << 24;

// The linear part of a matrix taken apart: scale first, then rotation.
struct eTurnAndScale {
    host::Matrix3 turn;
    host::Matrix3 scale;
};

eTurnAndScale TakeApart(const host::Matrix3& matrix) {
    ePlacement parts;
    SplitMatrix(matrix, parts);
    eTurnAndScale apart{Inverse(ScaleMatrix(parts.scale)) * matrix, ScaleMatrix(parts.scale)};
    apart.turn.SetTrans({});
    return apart;
}

// Works out the transforms of all nodes at one moment. Where scales are inherited in another way than
// matrices multiply, the nodes above count.
class ePose {
public:
    explicit ePose(const eAssimpImport& ownImport) : import(ownImport), places(ownImport.nodes.size()) {
        isPlain = std::ranges::all_of(import.nodes, [](const eAssimpNode& node) {
            return node.facts == nullptr || node.facts->inherit == eFbxInherit::AsMatrices;
        });
    }

    // Relative to the parent, in the scene; at a time of the take in the library's ticks, or without
    // animation.
    host::Matrix3 At(int number, const eAssimpTake* take, double ticks) {
        const eAssimpNode& node = import.nodes[static_cast<std::size_t>(number)];
        const host::Matrix3 local = FileMatrixAt(node, take, ticks);
        const host::Matrix3 relative = isPlain ? local : Inherited(number, local);
        return Inverse(node.frame) * relative * FrameAbove(node);
    }

    // True if every node is to be asked for at each moment, parents first.
    bool NeedsAll() const { return !isPlain; }

private:
    struct ePlace {
        host::Matrix3 world;  // in the file
        host::Matrix3 turn;   // all rotations down to the node
        host::Matrix3 scale;  // what the node hands down
        host::Matrix3 own;    // its own scale
    };

    static host::Matrix3 FileMatrixAt(const eAssimpNode& node, const eAssimpTake* take, double ticks) {
        if (take == nullptr) {
            return StillFileMatrix(node);
        }
        host::Matrix3 matrix;
        for (const aiNode* step : node.chain) {
            const auto channel = take->channels.find(step);
            matrix = (channel == take->channels.end() ? HostMatrix(step->mTransformation)
                                                      : ChannelMatrix(*channel->second, ticks)) *
                     matrix;
        }
        return matrix * node.intoParent;
    }

    host::Matrix3 FrameAbove(const eAssimpNode& node) const {
        return node.parent < 0 ? import.toHost : import.nodes[static_cast<std::size_t>(node.parent)].frame;
    }

    // The node relative to its parent as its way of inheriting has it.
    host::Matrix3 Inherited(int number, const host::Matrix3& local) {
        const eAssimpNode& node = import.nodes[static_cast<std::size_t>(number)];
        const ePlace above = node.parent < 0 ? ePlace{} : places[static_cast<std::size_t>(node.parent)];
        const eTurnAndScale own = TakeApart(local);
        ePlace& place = places[static_cast<std::size_t>(number)];
        place.turn = own.turn * above.turn;
        place.own = own.scale;
        const eFbxInherit inherit = node.facts == nullptr ? eFbxInherit::AsMatrices : node.facts->inherit;
        if (inherit == eFbxInherit::AsMatrices) {
            place.world = own.scale * own.turn * above.scale * above.turn;
        } else if (inherit == eFbxInherit::BehindRotation) {
            place.world = own.scale * above.scale * own.turn * above.turn;
        } else {
            place.world = own.scale * Inverse(above.own) * above.scale * own.turn * above.turn;
        }
        place.scale = place.world * Inverse(place.turn);
        place.world.SetTrans(local.GetTrans() * above.world);
        return place.world * Inverse(above.world);
    }

    const eAssimpImport& import;
    std::vector<ePlace> places;
    bool isPlain = true;
};

class eKeyMaker {
public:
    explicit eKeyMaker(eAssimpImport& ownImport)
        : import(ownImport), order(ParentsFirst(ownImport)), pose(ownImport) {
        for (const eAssimpTake& take : import.takes) {
            isMoved.resize(import.nodes.size());
            for (const int node : take.moved) {
                isMoved[static_cast<std::size_t>(node)] = true;
            }
        }
    }

    void MakeAll() {
        StandStill();
        if (!HasRoom()) {
            import.report.Problem("", eMessageId::ImportTakeKeys);
            return;
        }
        for (const eAssimpTake& take : import.takes) {
            for (int frame = take.firstFrame; frame <= take.lastFrame; ++frame) {
                MakeFrame(take, frame);
            }
        }
        for (eNodeData& record : import.scene.nodes) {
            DropIdleKeys(record);
        }
    }

private:
    bool HasRoom() const {
        const auto movedCount = static_cast<std::size_t>(std::ranges::count(isMoved, true));
        std::size_t frames = 0;
        for (const eAssimpTake& take : import.takes) {
            frames += static_cast<std::size_t>(take.lastFrame - take.firstFrame) + 1;
        }
        const std::size_t each = pose.NeedsAll() ? import.nodes.size() : movedCount;
        return each == 0 || frames <= kMostKeys / each;
    }

    void StandStill() {
        for (const int node : order) {
            import.RecordOf(node).transform = TransformOf(pose.At(node, nullptr, 0));
        }
    }

    void MakeFrame(const eAssimpTake& take, int frame) {
        const double ticks = (frame - take.shift) / take.rate;
        for (const int node : order) {
            const bool hasKeys = !isMoved.empty() && isMoved[static_cast<std::size_t>(node)];
            if (!hasKeys && !pose.NeedsAll()) {
                continue;
            }
            const host::Matrix3 matrix = pose.At(node, &take, ticks);
            if (hasKeys) {
                AddKey(node, frame, matrix);
            }
        }
    }

    void AddKey(int node, int frame, const host::Matrix3& matrix) {
        ePlacement parts;
        if (!SplitMatrix(matrix, parts)) {
            import.report.CannotShow(ePhrase::LostShears);
        }
        import.RecordOf(node).keys.push_back(
            {static_cast<double>(frame), parts.position, parts.rotation, parts.scale});
    }

    // A part that equals its neighbours on both sides says nothing; nor does one that never leaves the
    // node's own transform.
    static void DropIdleKeys(eNodeData& record) {
        DropIdle(record, &eTransformKey::position, record.transform.parts.position);
        DropIdle(record, &eTransformKey::rotation, record.transform.parts.rotation);
        DropIdle(record, &eTransformKey::scale, record.transform.parts.scale);
        std::erase_if(record.keys,
                      [](const eTransformKey& key) { return !key.position && !key.rotation && !key.scale; });
    }

    template <class Value>
    static void DropIdle(eNodeData& record, std::optional<Value> eTransformKey::*part, const Value& still) {
        std::vector<eTransformKey>& keys = record.keys;
        const bool isStill = !record.transform.matrix &&
                             std::ranges::all_of(keys, [&](const auto& key) { return key.*part == still; });
        std::vector<std::size_t> idle;
        for (std::size_t key = 0; key < keys.size(); ++key) {
            const bool isInside = key > 0 && key + 1 < keys.size();
            if (isStill || (isInside && keys[key].*part == keys[key - 1].*part &&
                            keys[key].*part == keys[key + 1].*part)) {
                idle.push_back(key);
            }
        }
        for (const std::size_t key : idle) {
            (keys[key].*part).reset();
        }
    }

    eAssimpImport& import;
    std::vector<int> order;
    ePose pose;
    std::vector<bool> isMoved;
};

}  // namespace

void MakeAssimpPoses(eAssimpImport& import) {
    eKeyMaker(import).MakeAll();
}

}  // namespace standalone
