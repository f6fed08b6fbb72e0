#include "verify/bone_list.h"

#include <algorithm>
#include <set>

#include "io/clean_name.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"

namespace verify {

namespace {

class eBoneCollector {
public:
    eBoneCollector(const eVerifiedScene& scene, bool isStructure)
        : scene_(scene), isStructure_(isStructure) {}

    eBoneList Collect(host::INode& root) {
        Visit(root);
        return std::move(list_);
    }

private:
    void Visit(host::INode& node) {
        const host::Object* object = node.EvalWorldState(scene_.StaticTime()).obj;
        if (object != nullptr && object->SuperClassID() == host::kLightSuperClass && !node.IsGroupMember()) {
            list_.lights.push_back(&node);
        }
        if (node.IsNodeHidden() || ClassifyNode(node) != eNodeKind::Ordinary) {
            return;
        }
        if (MayBeBone(scene_, node) && GetLodLevel(node) == 0) {
            AddBone(node);
        }
        for (int i = 0; i < node.NumberOfChildren(); ++i) {
            host::INode& child = *node.GetChildNode(i);
            const bool isModel = isStructure_ && HasUserProp(child, "Model");
            if (!child.IsNodeHidden() && !child.IsGroupMember() && !isModel) {
                Visit(child);
            }
        }
    }

    // Those children that have a level in their names, under their cleaned names.
    const std::vector<std::pair<std::string, host::INode*>>& LeveledBelow(const host::INode& parent) {
        const auto [entry, isNew] = leveled_.try_emplace(&parent);
        for (int i = isNew ? parent.NumberOfChildren() - 1 : -1; i >= 0; --i) {
            host::INode& child = *parent.GetChildNode(i);
            std::string name = CleanNodeName(child.GetName(), true);
            if (name.find("_lod") != std::string::npos && (!child.IsGroupMember() || child.IsGroupHead()) &&
                !child.IsNodeHidden() && ClassifyNode(child) == eNodeKind::Ordinary) {
                entry->second.emplace_back(std::move(name), &child);
            }
        }
        return entry->second;
    }

    std::vector<host::INode*> DetailLevelsOf(host::INode& node) {
        std::vector<host::INode*> details;
        const std::string prefix = CleanNodeName(node.GetName(), true) + "_lod";
        for (const auto& [name, sibling] : LeveledBelow(*node.GetParentNode())) {
            if (sibling != &node && name.starts_with(prefix)) {
                details.push_back(sibling);
            }
        }
        std::ranges::stable_sort(details, {}, [](const host::INode* detail) { return GetLodLevel(*detail); });
        return details;
    }

    void AddBone(host::INode& node) {
        const std::string name = Number(node, 0);
        if (!names_.insert(name).second) {
            list_.fault = "two bones have the name " + name;
        }
        int level = 0;
        const std::vector<host::INode*> details = DetailLevelsOf(node);
        for (host::INode* detail : details) {
            ++level;
            const std::string detailName = Number(*detail, level);
            if (GetLodLevel(*detail) != level) {
                list_.fault = "the level of detail " + std::to_string(level) + " of " + name + " is missing";
            }
            CheckNothingBelow(*detail, detailName);
        }
        if (!details.empty()) {
            list_.details[&node] = details;
        }
    }

    void CheckNothingBelow(const host::INode& detail, const std::string& name) {
        for (int i = 0; i < detail.NumberOfChildren(); ++i) {
            if (!detail.GetChildNode(i)->IsGroupMember()) {
                list_.fault = "something is linked to the level of detail " + name;
            }
        }
    }

    std::string Number(host::INode& node, int level) {
        std::string name = CleanNodeName(node.GetName(), true);
        list_.numbers[&node] = static_cast<int>(list_.bones.size());
        list_.bones.push_back({&node, name, level});
        return name;
    }

    const eVerifiedScene& scene_;
    bool isStructure_;
    eBoneList list_;
    std::set<std::string> names_;
    std::unordered_map<const host::INode*, std::vector<std::pair<std::string, host::INode*>>> leveled_;
};

}  // namespace

int eBoneList::NumberOf(const host::INode& node) const {
    const auto found = numbers.find(&node);
    return found != numbers.end() ? found->second : -1;
}

eBoneList ListBones(const eVerifiedScene& scene, host::INode& root, bool isStructure) {
    return eBoneCollector(scene, isStructure).Collect(root);
}

bool MayBeBone(const eVerifiedScene& scene, host::INode& node) {
    const host::Object* object = node.EvalWorldState(scene.StaticTime()).obj;
    if (node.IsGroupHead() || node.IsGroupMember() || object == nullptr) {
        return node.IsGroupHead();
    }
    const std::uint32_t superClass = object->SuperClassID();
    return superClass == host::kHelperSuperClass || superClass == host::kShapeSuperClass ||
           (superClass == host::kGeometrySuperClass && object->ClassID() != host::kTargetClass);
}

host::INode* BoneAbove(const host::INode& node) {
    host::INode* above = node.GetParentNode();
    while (above != nullptr && above->IsGroupMember()) {
        above = above->GetParentNode();
    }
    return above;
}

}  // namespace verify
