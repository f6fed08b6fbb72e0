#include "verify/mesh_source.h"

#include <algorithm>
#include <unordered_map>

#include "io/clean_name.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"
#include "verify/node_skin.h"

namespace verify {

namespace {

bool HoldsTriangles(host::INode& node) {
    const host::Object* object = node.EvalWorldState(0).obj;
    return object != nullptr && object->SuperClassID() == host::kGeometrySuperClass &&
           object->ClassID() != host::kTargetClass;
}

// The same walk that the engine's skeleton shows: what may hold geometry, and whose mesh it feeds.
class eSourceWalk {
public:
    eSourceWalk(const eVerifiedScene& scene, const eSceneModel& model) : scene_(scene), model_(model) {
        const host::INode* top = model.structure != nullptr ? model.structure : model.root;
        CountUses(const_cast<host::INode&>(*top), model.structure != nullptr);
    }

    eMeshSources Find() {
        Visit(*model_.root, nullptr, true);
        for (const eSlot& slot : slots_) {
            if (slot.isWritten) {
                found_.meshes.push_back(slot.mesh);
            } else {
                CountLost(slot.mesh.feeders);
            }
        }
        return std::move(found_);
    }

private:
    // Of a bone: the triangles that gather for it.
    struct eSlot {
        eSceneMesh mesh;
        bool wantsMesh = false;
        bool isWritten = false;
        bool isClosed = false;  // what comes now is too late
    };
    // Where a node's geometry comes from and goes to.
    struct eSource {
        host::INode* shared = nullptr;  // the node whose mesh it shows
        host::INode* merged = nullptr;  // the node whose mesh it feeds
    };

    // Objects that several nodes show: the first of them brings the mesh. A Structure inside another one
    // looks after its own.
    void CountUses(host::INode& node, bool inStructure) {
        if (node.IsGroupMember()) {
            return;
        }
        if (const host::Object* object = node.EvalWorldState(0).obj) {
            auto& [first, count] = uses_[object];
            first = count++ == 0 ? &node : first;
        }
        for (int i = 0; i < node.NumberOfChildren(); ++i) {
            host::INode& child = *node.GetChildNode(i);
            const bool isModel = HasUserProp(child, "Model");
            if (!inStructure || !isModel || !HasUserProp(child, "Structure")) {
                CountUses(child, inStructure && !isModel);
            }
        }
    }

    void CountLost(const std::vector<host::INode*>& feeders) {
        if (const auto lost =
                std::ranges::count_if(feeders, [](host::INode* n) { return HoldsTriangles(*n); })) {
            found_.leftOut["its node shows no mesh"] += static_cast<int>(lost);
        }
    }

    // False ends the walk, as a broken reference does.
    bool Visit(host::INode& node, host::INode* mergedAbove, bool isCalled) {
        const bool isOrdinary = ClassifyNode(node) == eNodeKind::Ordinary;
        const bool isMember = node.IsGroupMember();
        const bool isBone = isOrdinary && !isMember && MayBeBone(scene_, node);
        if (isOrdinary && !isMember && node.IsNodeHidden()) {
            return true;
        }
        if (isBone && ((GetLodLevel(node) != 0 && !isCalled) || model_.bones.NumberOf(node) < 0)) {
            return true;
        }
        eSource source{.merged = isMember ? mergedAbove : nullptr};
        if (isBone && !ReadSource(node, source)) {
            return false;
        }
        if (isBone) {
            OpenSlot(node, source);
        }
        if (isOrdinary) {
            Feed(node, source);
            return VisitBelow(node, source, isBone);
        }
        return true;
    }

    bool VisitBelow(host::INode& node, const eSource& source, bool isBone) {
        const auto details = model_.bones.details.find(&node);
        if (isBone && details != model_.bones.details.end()) {
            for (host::INode* detail : details->second) {
                Visit(*detail, nullptr, true);
            }
        }
        for (int i = 0; i < node.NumberOfChildren(); ++i) {
            host::INode& child = *node.GetChildNode(i);
            if (model_.isStructure && !child.IsGroupMember() && HasUserProp(child, "Model")) {
                continue;
            }
            if ((node.IsGroupMember() && !child.IsGroupMember()) || !Visit(child, source.merged, false)) {
                return false;
            }
        }
        if (isBone) {
            SlotOf(node).isClosed = true;
        }
        return true;
    }

    bool ReadSource(host::INode& node, eSource& source) const {
        std::string name;
        node.GetUserPropString("Mesh", name);
        if (!name.empty()) {
            source.shared = scene_.host.GetINodeByName(name.c_str());
            if (source.shared == nullptr) {
                return false;
            }
        } else if (const auto use = uses_.find(node.EvalWorldState(scene_.StaticTime()).obj);
                   use != uses_.end() && use->second.second > 1) {
            source.shared = use->second.first;
        }
        if (node.GetUserPropString("CommonMesh", name)) {
            source.merged = name.empty() ? &node : scene_.host.GetINodeByName(name.c_str());
            return source.merged != nullptr && model_.bones.NumberOf(*source.merged) >= 0;
        }
        return true;
    }

    void OpenSlot(host::INode& node, const eSource& source) {
        eSlot& slot = SlotOf(source.merged != nullptr ? *source.merged : node);
        const host::INode& shown = source.shared != nullptr ? *source.shared : node;
        slot.wantsMesh =
            source.merged != nullptr || FindSkinModifier(node) != nullptr || HasUserProp(shown, "Poly");
        const bool isOwn = (source.shared == nullptr || source.shared == &node) &&
                           (source.merged == nullptr || source.merged == &node);
        if (isOwn && slot.wantsMesh && IsAskedFor(node, source)) {
            const bool isShared = source.shared != nullptr || model_.isStructure;
            std::string frames;
            slot.isWritten = true;
            slot.mesh.name = CleanNodeName(node.GetName(), true);
            slot.mesh.folder = isShared ? model_.sharedFolder : model_.folder;
            slot.mesh.hasFrames = node.GetUserPropString("CommonMesh", frames) && frames.empty();
        }
    }

    bool IsAskedFor(host::INode& node, const eSource& source) const {
        int voxels = 0;
        node.GetUserPropInt("Voxels", voxels);
        return scene_.options.exportMesh != 0 && node.Renderable() &&
               (voxels != 0 || source.merged != nullptr || HasUserProp(node, "Poly")) &&
               (!scene_.selectedOnly || node.Selected()) && !IsShape(node);
    }

    void Feed(host::INode& node, const eSource& source) {
        const host::Object* object = node.EvalWorldState(0).obj;
        const bool mayHold = object != nullptr && (object->SuperClassID() == host::kGeometrySuperClass ||
                                                   object->SuperClassID() == host::kHelperSuperClass);
        if (!mayHold || scene_.options.exportGeometry == 0 || scene_.options.exportMesh == 0 ||
            (scene_.selectedOnly && !node.Selected())) {
            return;
        }
        host::INode& owner = source.merged != nullptr ? *source.merged : OutOfGroup(node);
        if (source.shared != nullptr && source.shared != &node) {
            return;
        }
        eSlot& slot = SlotOf(owner);
        const char* const reason = !node.Renderable()                          ? "it is not rendered"
                                   : !slot.wantsMesh                           ? "it asks for no mesh"
                                   : slot.isClosed && source.merged != nullptr ? "it comes too late"
                                                                               : nullptr;
        if (reason == nullptr) {
            slot.mesh.feeders.push_back(&node);
        } else if (HoldsTriangles(node)) {
            ++found_.leftOut[reason];
        }
    }

    static host::INode& OutOfGroup(host::INode& node) {
        return node.IsGroupMember() ? *BoneAbove(node) : node;
    }

    eSlot& SlotOf(host::INode& owner) {
        const auto [entry, isNew] = places_.try_emplace(&owner, slots_.size());
        if (isNew) {
            slots_.emplace_back().mesh.owner = &owner;
        }
        return slots_[entry->second];
    }

    const eVerifiedScene& scene_;
    const eSceneModel& model_;
    std::unordered_map<const host::Object*, std::pair<host::INode*, int>> uses_;
    std::vector<eSlot> slots_;
    std::unordered_map<const host::INode*, std::size_t> places_;
    eMeshSources found_;
};

}  // namespace

eMeshSources FindMeshSources(const eVerifiedScene& scene, const eSceneModel& model) {
    return eSourceWalk(scene, model).Find();
}

}  // namespace verify
