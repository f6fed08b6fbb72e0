#include "verify/scene_models.h"

#include <algorithm>

#include "io/clean_name.h"
#include "platform/drive_table.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"

namespace verify {

namespace {

bool IsStructure(const host::INode& node) {
    return HasUserProp(node, "Structure");
}

// What lies nested in a Structure stands before it.
void FindNestedRoots(host::INode& node, std::vector<host::INode*>& roots) {
    if (ClassifyNode(node) != eNodeKind::Ordinary) {
        return;
    }
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        host::INode& child = *node.GetChildNode(i);
        if (child.IsNodeHidden() || child.IsGroupMember()) {
            continue;
        }
        const bool isModel = HasUserProp(child, "Model");
        if (!isModel || IsStructure(child)) {
            FindNestedRoots(child, roots);
        }
        if (isModel) {
            roots.push_back(&child);
        }
    }
}

std::vector<host::INode*> FindRoots(const eVerifiedScene& scene, std::vector<host::INode*>& scanLights) {
    std::vector<host::INode*> roots;
    const host::INode& top = *scene.host.GetRootNode();
    for (int i = 0; i < top.NumberOfChildren(); ++i) {
        host::INode& root = *top.GetChildNode(i);
        if (root.IsNodeHidden() || GetLodLevel(root) != 0) {
            continue;
        }
        std::string fault;
        if (IsStructure(root)) {
            FindNestedRoots(root, roots);
            const eBoneList scan = ListBones(scene, root, true);
            scanLights.insert(scanLights.end(), scan.lights.begin(), scan.lights.end());
            fault = scan.fault;
        }
        if (fault.empty()) {
            roots.push_back(&root);
        }
    }
    std::ranges::reverse(roots);
    return roots;
}

// Why the model gets no files; empty if it does.
std::string FaultOf(const eVerifiedScene& scene, const eSceneModel& model, const std::string& path) {
    if (!model.bones.fault.empty()) {
        return model.bones.fault;
    }
    if (!host::HasUserPropString(*model.root, "Model")) {
        return "it has no property Model";
    }
    const std::string root = ResolveDots(scene.options.resourceRoot.Text() + "/");
    const bool isInside = !platform::HasDrive(path) && ResolveDots(model.folder.Text()).starts_with(root);
    return isInside ? std::string() : "its path leads out of the resource root";
}

const eSceneModel* ModelAround(const std::vector<eSceneModel>& models, const host::INode& root) {
    for (const host::INode* above = root.GetParentNode(); above != nullptr; above = above->GetParentNode()) {
        if (IsStructure(*above) && host::HasUserPropString(*above, "Model")) {
            const auto found = std::ranges::find(models, above, &eSceneModel::root);
            return found != models.end() && found->fault.empty() ? &*found : nullptr;
        }
    }
    return nullptr;
}

// `models`: those before it, its Structure among them.
eSceneModel MakeModel(const eVerifiedScene& scene, host::INode& root,
                      const std::vector<eSceneModel>& models) {
    eSceneModel model;
    std::string path;
    root.GetUserPropString("Model", path);
    model.root = &root;
    model.isStructure = IsStructure(root);
    model.bones = ListBones(scene, root, model.isStructure);
    model.folder = scene.options.resourceRoot / eName(CleanNodeName(path, false));
    model.fault = FaultOf(scene, model, path);
    const eSceneModel* const around = model.isStructure ? &model : ModelAround(models, root);
    model.structure = around != nullptr ? around->root : nullptr;
    model.sharedFolder = around != nullptr ? around->folder / "common" : model.folder;
    return model;
}

}  // namespace

eName eSceneModel::File(const char* ending) const {
    eName file = folder / folder.Part(eName::Title);
    return file.Append(ending);
}

std::vector<eSceneModel> FindModels(const eVerifiedScene& scene, std::vector<host::INode*>& scanLights) {
    std::vector<eSceneModel> models;
    for (host::INode* root : FindRoots(scene, scanLights)) {
        models.push_back(MakeModel(scene, *root, models));
    }
    return models;
}

}  // namespace verify
