#include "answers/file_nodes.h"

#include <algorithm>
#include <functional>

namespace answers {

namespace {

using eIsFed = std::function<bool(const eNodeNote&)>;

bool UsesOneOf(const eNodeNote& node, const std::vector<std::string>& materials) {
    return std::ranges::any_of(node.subMeshes, [&](const eSubMeshNote& subMesh) {
        return std::ranges::find(materials, subMesh.material) != materials.end();
    });
}

// A node that gave its geometry to the mesh of another one, or wrote its own.
bool FeedsMeshIn(const eRunJournal& journal, const eNodeNote& node, const eName& folder) {
    if (node.isMeshWritten) {
        return node.meshFolder == folder;
    }
    const auto owner = journal.nodes.find(node.fedMesh);
    return owner != journal.nodes.end() && owner->second.isMeshWritten && owner->second.meshFolder == folder;
}

bool IsInText(const eNodeNote& node) {
    switch (node.kind) {
        case eNodeKind::Ordinary:
            return node.isBone;
        case eNodeKind::Volume:
        case eNodeKind::SupportPoint:
        case eNodeKind::Zone:
        case eNodeKind::Preview:
            return true;
        default:
            return false;
    }
}

// The definition is the root's, which has the number 0.
bool IsInDefinition(const eNodeNote& node) {
    return node.kind == eNodeKind::Volume || (node.isBone && node.number == 0);
}

// What a file asks of a node.
eIsFed RuleOf(const eRunJournal& journal, const eName& path, const eFileNote& file) {
    const std::string extension = path.Part(eName::Extension).Text();
    const std::string fileName = path.Part(eName::FileName).Text();
    const eName folder(path.Part(eName::Folder).Text().substr(0, path.Part(eName::Folder).Text().size() - 1));
    if (fileName == ".mesh") {
        return [&journal, folder](const eNodeNote& node) { return FeedsMeshIn(journal, node, folder); };
    }
    if (fileName == ".material") {
        return [&file, folder](const eNodeNote& node) {
            return node.materialFolder == folder && UsesOneOf(node, file.materials);
        };
    }
    const auto isOfModel = [&file](const eNodeNote& node) {
        return std::ranges::find(file.models, node.model) != file.models.end();
    };
    if (!file.materials.empty()) {
        return [&file, isOfModel](const eNodeNote& node) {
            return isOfModel(node) && UsesOneOf(node, file.materials);
        };
    }
    if (!file.animation.empty()) {
        return [&file, isOfModel](const eNodeNote& node) {
            return isOfModel(node) &&
                   std::ranges::find(node.animations, file.animation) != node.animations.end();
        };
    }
    if (extension == ".txt") {
        return [isOfModel](const eNodeNote& node) { return isOfModel(node) && !node.animations.empty(); };
    }
    if (extension == ".def") {
        return [isOfModel](const eNodeNote& node) { return isOfModel(node) && IsInDefinition(node); };
    }
    return [isOfModel](const eNodeNote& node) { return isOfModel(node) && IsInText(node); };
}

}  // namespace

std::vector<const host::INode*> NodesOf(const eRunJournal& journal, const eName& path,
                                        const eFileNote& file) {
    const eIsFed isFed = RuleOf(journal, path, file);
    std::vector<const host::INode*> nodes;
    for (const auto& [node, note] : journal.nodes) {
        if (note.leftOut == eLeftOut::No && isFed(note)) {
            nodes.push_back(node);
        }
    }
    return nodes;
}

}  // namespace answers
