#include "verify/side_nodes.h"

#include <algorithm>
#include <set>

#include "base/ansi.h"
#include "io/clean_name.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"

namespace verify {

namespace {

class eSideWalk {
public:
    eSideWalk(const eVerifiedScene& scene, const eSceneModel& model) : scene_(scene), model_(model) {}

    eSideNodes Find() {
        Visit(*model_.root);
        ByName(side_.volumes);
        ByName(side_.zones);
        std::set<std::string> names;
        std::erase_if(side_.volumes, [&](const host::INode* node) {
            return !names.insert(CleanNodeName(node->GetName(), true)).second;
        });
        return std::move(side_);
    }

private:
    // False where the tree is broken, so that nothing behind it is looked at.
    bool Visit(host::INode& node) {
        const eNodeKind kind = ClassifyNode(node);
        const bool isOwn = kind == eNodeKind::Ordinary && !node.IsGroupMember();
        const bool isBone = isOwn && MayBeBone(scene_, node);
        const bool isDetail = isBone && GetLodLevel(node) != 0 && &node != model_.root;
        if (isDetail || (isOwn && node.IsNodeHidden()) || (isBone && model_.bones.NumberOf(node) < 0)) {
            return true;
        }
        if (isBone && !LeadsToMesh(node)) {
            return false;
        }
        side_.isLand = side_.isLand || HasUserProp(node, "Land");
        Sort(node, kind);
        return kind != eNodeKind::Ordinary || VisitChildren(node);
    }

    // True unless a property of the bone names a node for its mesh that can't serve.
    bool LeadsToMesh(const host::INode& node) const {
        std::string name;
        if (node.GetUserPropString("Mesh", name) && !name.empty() &&
            scene_.host.GetINodeByName(name.c_str()) == nullptr) {
            return false;
        }
        if (!node.GetUserPropString("CommonMesh", name) || name.empty()) {
            return true;
        }
        const host::INode* const target = scene_.host.GetINodeByName(name.c_str());
        return target != nullptr && model_.bones.NumberOf(*target) >= 0;
    }

    bool VisitChildren(host::INode& node) {
        for (int i = 0; i < node.NumberOfChildren(); ++i) {
            host::INode& child = *node.GetChildNode(i);
            if (model_.isStructure && !child.IsGroupMember() && HasUserProp(child, "Model")) {
                continue;
            }
            if ((node.IsGroupMember() && !child.IsGroupMember()) || !Visit(child)) {
                return false;
            }
        }
        return true;
    }

    void Sort(host::INode& node, eNodeKind kind) {
        if (kind == eNodeKind::Volume) {
            side_.volumes.push_back(&node);
        }
        if (kind == eNodeKind::Zone || (kind == eNodeKind::Volume && HasUserProp(node, "Obstacle"))) {
            side_.zones.push_back(&node);
        }
        if (kind == eNodeKind::SupportPoint) {
            side_.supports.push_back(&node);
        }
        if (kind == eNodeKind::Preview) {
            side_.previews.push_back(&node);
        }
    }

    static void ByName(std::vector<host::INode*>& nodes) {
        std::ranges::stable_sort(nodes, [](const host::INode* a, const host::INode* b) {
            return CompareNoCase(a->GetName(), b->GetName()) < 0;
        });
    }

    const eVerifiedScene& scene_;
    const eSceneModel& model_;
    eSideNodes side_;
};

}  // namespace

eSideNodes FindSideNodes(const eVerifiedScene& scene, const eSceneModel& model) {
    return eSideWalk(scene, model).Find();
}

}  // namespace verify
