#include "scene/bones/bone_tree.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/lod_nodes.h"
#include "scene/current_model.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"
#include "scene/run_journal.h"
#include "scene/scene_as_read.h"

namespace {

struct eNamedBone {
    const host::INode* node;
    std::string name;  // cleaned
};

class eBonePass {
public:
    eBonePass(Export& run_, int& number_, bool scanMode_)
        : run(run_), number(number_), scanMode(scanMode_), time(run_.StaticTime()) {}

    bool Run(host::INode& root) {
        Visit(root);
        TellEqualNames();
        UpdateLights();
        return hasError;
    }

private:
    void Visit(host::INode& node);
    void VisitChildren(host::INode& node);
    void AddNestedModel(host::INode& model);
    void AddModelsBelow(host::INode& node);
    void AddLight(host::INode& node, host::Object* object);
    void AddBone(host::INode& node, std::string name);
    void AddDetailLevels(host::INode& node);
    void CheckDetailLevel(host::INode& detail, const std::string& name, int level);
    void GiveNumber(host::INode& node, const std::string& name);
    void TellEqualNames();
    void UpdateLights();
    template <class... Values>
    void TellFault(eMessageId id, eMessagePlace place, const Values&... values) {
        Tell(run, id, std::move(place), values...);
        hasError = true;
    }

    Export& run;
    int& number;
    const bool scanMode;
    const host::TimeValue time;
    std::vector<eNamedBone> names;  // of the bones that are no detail levels
    bool hasError = false;
};

void eBonePass::Visit(host::INode& node) {
    host::Object* const object = node.EvalWorldState(time).obj;
    AddLight(node, object);
    const bool isCandidate = IsBoneCandidate(node, object);
    if (node.IsNodeHidden() || ClassifyNode(node) != eNodeKind::Ordinary) {
        return;
    }
    if (isCandidate) {
        std::string name = CleanNodeName(node.GetName(), true);
        if (LodLevelOfName(name) == 0) {
            AddBone(node, std::move(name));
        }
    }
    VisitChildren(node);
}

void eBonePass::VisitChildren(host::INode& node) {
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        host::INode& child = *node.GetChildNode(i);
        if (child.IsNodeHidden() || child.IsGroupMember()) {
            continue;
        }
        if (run.model->structureMode && HasUserProp(child, "Model")) {
            if (scanMode) {
                AddNestedModel(child);
            }
            continue;
        }
        Visit(child);
    }
}

// A Structure has models of its own nested in it: like those of the outermost one they stand before it, and
// the export, which goes backwards, comes to them right after it.
void eBonePass::AddNestedModel(host::INode& model) {
    if (HasUserProp(model, "Structure")) {
        AddModelsBelow(model);
    }
    AddModel(run, model);
}

void eBonePass::AddModelsBelow(host::INode& node) {
    if (ClassifyNode(node) != eNodeKind::Ordinary) {
        return;
    }
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        host::INode& child = *node.GetChildNode(i);
        if (child.IsNodeHidden() || child.IsGroupMember()) {
            continue;
        }
        if (HasUserProp(child, "Model")) {
            AddNestedModel(child);
        } else {
            AddModelsBelow(child);
        }
    }
}

void eBonePass::AddLight(host::INode& node, host::Object* object) {
    if (!run.options.exportLightsCameras || node.IsGroupMember() || object == nullptr ||
        object->SuperClassID() != host::kLightSuperClass) {
        return;
    }
    auto* const light = dynamic_cast<host::LightObject*>(object);
    if (light == nullptr || !light->EvalLightState(time).on) {
        return;
    }
    node.RenderBegin(time, 0);
    if (host::LightDesc* description = light->CreateLightDesc(node)) {
        run.scene->sceneLights.emplace_back(description);
    }
}

void eBonePass::AddBone(host::INode& node, std::string name) {
    GiveNumber(node, name);
    names.push_back({&node, std::move(name)});
    AddDetailLevels(node);
}

void eBonePass::AddDetailLevels(host::INode& node) {
    std::vector<host::INode*> details;
    FindLodNodes(run, node, details);
    int level = 0;
    for (host::INode* detail : details) {
        const std::string name = CleanNodeName(detail->GetName(), true);
        GiveNumber(*detail, name);
        CheckDetailLevel(*detail, name, ++level);
    }
}

void eBonePass::CheckDetailLevel(host::INode& detail, const std::string& name, int level) {
    if (LodLevelOfName(name) != level) {
        TellFault(eMessageId::BonesMissingLevel, {.node = host::PathOf(detail)}, names.back().name, level);
    }
    for (int i = detail.NumberOfChildren() - 1; i >= 0; --i) {
        if (!detail.GetChildNode(i)->IsGroupMember()) {
            TellFault(eMessageId::BonesChildOfLevel, {.node = host::PathOf(detail)}, detail.GetName());
            break;
        }
    }
}

void eBonePass::GiveNumber(host::INode& node, const std::string& name) {
    node.SetRenderData(std::make_unique<Export::eRenderData>(number++));
    run.scene->numberedNodes.push_back(&node);
    run.model->boneNames.emplace_back(name);
}

// Every pair of equal names is one message, with the pairs in the order of their rows: each row is told as
// often as its name comes again behind it.
void eBonePass::TellEqualNames() {
    std::unordered_map<std::string_view, int> rowsWithName;
    for (const eNamedBone& bone : names) {
        ++rowsWithName[bone.name];
    }
    for (const eNamedBone& bone : names) {
        for (int again = --rowsWithName[bone.name]; again > 0; --again) {
            TellFault(eMessageId::BonesDuplicateName, {.node = host::PathOf(*bone.node)}, bone.name);
        }
    }
}

void eBonePass::UpdateLights() {
    const host::RendContext context;
    for (const auto& light : run.scene->sceneLights) {
        light->Update(time, context, true, true);
    }
}

}  // namespace

bool CollectBones(Export& run, host::INode& node, int& number, bool scanMode) {
    return eBonePass(run, number, scanMode).Run(node);
}

void ForgetBoneNumbers(Export& run) {
    for (host::INode* node : run.scene->numberedNodes) {
        node->SetRenderData(nullptr);
    }
    run.scene->numberedNodes.clear();
}

void AddModel(Export& run, host::INode& root) {
    if (!host::HasUserPropString(root, "Model") && !host::HasUserPropString(root, "XModel")) {
        NoteLeftOut(run, root, eLeftOut::NoModel);
        TellOfNode(run, eMessageId::ModelsNoPath, root);
        return;
    }
    run.scene->models.emplace_back().root = &root;
}

bool IsBoneCandidate(const host::INode& node, const host::Object* object) {
    if (node.IsGroupHead()) {
        return true;
    }
    if (node.IsGroupMember() || object == nullptr) {
        return false;
    }
    switch (object->SuperClassID()) {
        case host::kHelperSuperClass:
        case host::kShapeSuperClass:
            return true;
        case host::kGeometrySuperClass:
            return object->ClassID() != host::kTargetClass;
        default:
            return false;
    }
}

int NodeIndex(const host::INode& node, const host::INode* owner) {
    const host::INode& bone = owner != nullptr ? *owner : OutOfGroup(node);
    const auto* data = dynamic_cast<const Export::eRenderData*>(bone.GetRenderData());
    return data != nullptr ? data->index : -1;
}

const host::INode& OutOfGroup(const host::INode& node) {
    const host::INode* current = &node;
    while (current->IsGroupMember() && current->GetParentNode() != nullptr) {
        current = current->GetParentNode();
    }
    return *current;
}

host::INode* ParentBone(const host::INode& node) {
    host::INode* parent = node.GetParentNode();
    while (parent != nullptr && parent->IsGroupMember()) {
        parent = parent->GetParentNode();
    }
    return parent;
}
