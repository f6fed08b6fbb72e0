#include "standalone/loaders/scene_document/scene_document_write_context.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "base/ansi.h"

namespace standalone {
namespace {

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

// Texts of which no two are equal once keyOf has looked at them.
class eUniqueTexts {
public:
    explicit eUniqueTexts(std::string (*textKey)(std::string_view)) : keyOf(textKey) {}

    void Take(const std::string& text) { taken.insert(keyOf(text)); }

    // The text itself, or with the first number that makes it new.
    std::string MakeUnique(const std::string& text) {
        std::string unique = text;
        int& number = lastNumber.try_emplace(keyOf(text), 1).first->second;
        while (!taken.insert(keyOf(unique)).second) {
            unique = text + '_' + std::to_string(++number);
        }
        return unique;
    }

private:
    std::string (*keyOf)(std::string_view);
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, int> lastNumber;  // of those tried with the text
};

std::string SameText(std::string_view text) {
    return std::string(text);
}

// The nodes that something in the document refers to by name.
std::vector<bool> FindReferencedNodes(const eSceneData& scene) {
    std::vector<bool> isReferenced(scene.nodes.size());
    const auto refer = [&](int node) {
        if (node >= 0) {
            isReferenced[At(node)] = true;
        }
    };
    for (const eNodeData& node : scene.nodes) {
        refer(node.target);
    }
    for (const eSelectionSet& set : scene.selectionSets) {
        std::for_each(set.nodes.begin(), set.nodes.end(), refer);
    }
    for (const eObjectData& object : scene.objects) {
        if (const auto* const light = std::get_if<eLightObject>(&object.kind)) {
            std::for_each(light->listedNodes.begin(), light->listedNodes.end(), refer);
        }
        for (const eModifierKind& modifier : object.modifiers) {
            if (const auto* const skin = std::get_if<eSkinModifier>(&modifier)) {
                std::for_each(skin->bones.begin(), skin->bones.end(), refer);
            }
        }
    }
    return isReferenced;
}

// A name finds the first node that has it, so a later one that something refers to needs a name of its own.
void SettleNodeNames(eDocumentOutput& output) {
    const std::vector<bool> isReferenced = FindReferencedNodes(output.scene);
    std::unordered_map<std::string, std::size_t> firstOfName;
    eUniqueTexts names(LowerAnsi);
    for (std::size_t node = 0; node < output.scene.nodes.size(); ++node) {
        const std::string& name = output.scene.nodes[node].name;
        output.nodeNames.push_back(name);
        firstOfName.try_emplace(LowerAnsi(name), node);
        names.Take(name);
    }
    for (std::size_t node = 0; node < output.nodeNames.size(); ++node) {
        std::string& name = output.nodeNames[node];
        if (isReferenced[node] && firstOfName.at(LowerAnsi(name)) != node) {
            const std::string unique = names.MakeUnique(name);
            output.warnings.push_back(
                MakeLoadMessage("", eMessageId::DocumentRenamedNode, ToUtf8(name), ToUtf8(unique)));
            name = unique;
        }
    }
}

void SettleMaterialIds(eDocumentOutput& output) {
    eUniqueTexts ids(SameText);
    for (const eMaterialData& material : output.scene.materials) {
        output.materialIds.push_back(ids.MakeUnique(material.id.empty() ? "material" : material.id));
    }
}

// An object stands at its node, unless it has an id or several nodes (or none) show it.
void SettleObjectIds(eDocumentOutput& output) {
    std::vector<int> uses(output.scene.objects.size());
    for (const eNodeData& node : output.scene.nodes) {
        if (node.object >= 0) {
            ++uses[At(node.object)];
        }
    }
    eUniqueTexts ids(SameText);
    for (std::size_t object = 0; object < uses.size(); ++object) {
        const std::string& id = output.scene.objects[object].id;
        const bool isInline = id.empty() && uses[object] == 1;
        output.objectIds.push_back(isInline ? std::string() : ids.MakeUnique(id.empty() ? "object" : id));
    }
}

}  // namespace

void SettleNames(eDocumentOutput& output) {
    SettleNodeNames(output);
    SettleMaterialIds(output);
    SettleObjectIds(output);
}

void WriteNodeReferences(eDocumentOutput& output, const std::vector<int>& nodes) {
    output.json.BeginList();
    for (const int node : nodes) {
        output.json.Value(output.nodeNames[At(node)]);
    }
    output.json.EndList();
}

}  // namespace standalone
