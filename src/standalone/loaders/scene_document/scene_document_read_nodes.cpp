#include "standalone/loaders/scene_document/scene_document_read_nodes.h"

#include <array>

#include "base/ansi.h"
#include "standalone/loaders/scene_document/scene_document_read_objects.h"
#include "standalone/loaders/scene_document/scene_document_words.h"
#include "standalone/loaders/scene_document/sort_by_frame.h"

namespace standalone {
namespace {

// A list of siblings on the way down the tree.
struct eOpenSiblings {
    eJsonIndex next = 0;
    eJsonIndex end = 0;
    int parent = -1;
};

int AddNode(eDocumentContext& context, eJsonIndex value, int parent) {
    const int node = static_cast<int>(context.scene.nodes.size());
    eNodeData& data = context.scene.nodes.emplace_back();
    context.nodeValues.push_back(value);
    data.parent = parent;
    auto& siblings =
        parent < 0 ? context.scene.roots : context.scene.nodes[static_cast<std::size_t>(parent)].children;
    siblings.push_back(node);

    const eJsonIndex name = context.json.Tree().FindMember(value, "name");
    if (name != kNoJson && context.json.Read(name, data.name)) {
        context.nodesByName.try_emplace(LowerAnsi(data.name), node);
    }
    return node;
}

void ReadProperties(eJsonReader& json, eJsonIndex value, std::string& properties) {
    if (!json.Tree().Is(value, eJsonKind::Array)) {
        json.Read(value, properties);
        return;
    }
    std::string line;
    bool isFirst = true;
    for (const eJsonIndex element : json.Tree().Children(value)) {
        json.Read(element, line);
        if (!isFirst) {
            properties += "\r\n";
        }
        properties += line;
        isFirst = false;
    }
}

void ReadGroupWord(eJsonReader& json, eJsonIndex value, eNodeData& node) {
    static constexpr std::array<std::string_view, 2> words = {"head", "member"};
    int word = 0;
    if (!json.ReadWord(value, words, word)) {
        return;
    }
    bool& flag = word == 0 ? node.groupHead : node.groupMember;
    if (flag) {
        json.Report(value, eMessageId::DocumentRepeatedWord);
    }
    flag = true;
}

void ReadGroup(eJsonReader& json, eJsonIndex value, eNodeData& node) {
    if (!json.Tree().Is(value, eJsonKind::Array)) {
        ReadGroupWord(json, value, node);
        return;
    }
    for (const eJsonIndex word : json.Tree().Children(value)) {
        ReadGroupWord(json, word, node);
    }
}

void ReadJointFlags(eJsonReader& json, eJsonIndex value, std::uint32_t& flags) {
    for (const eJsonIndex element : json.Elements(value)) {
        std::int64_t bit = 0;
        if (json.ReadWithin(element, 0, kJointFlagBits - 1, bit)) {
            flags |= 1U << bit;
        }
    }
}

void ReadVisibilityKey(eJsonReader& json, eJsonIndex value, eVisibilityKey& key) {
    if (!json.ExpectCount(value, 2)) {
        return;
    }
    const eJsonIndex frame = value + 1;
    json.Read(frame, key.frame);
    json.Read(json.Tree().values[frame].end, key.value);
}

void ReadVisibility(eJsonReader& json, eJsonIndex value, eNodeData& node) {
    if (json.Tree().IsNumber(value)) {
        json.Read(value, node.visibility);
        return;
    }
    if (!json.Tree().Is(value, eJsonKind::Array)) {
        json.Report(value, eMessageId::DocumentExpected, Utf8Words(ePhrase::JsonVisibility));
        return;
    }
    for (const eJsonIndex element : json.Tree().Children(value)) {
        ReadVisibilityKey(json, element, node.visibilityKeys.emplace_back());
    }
    SortByFrame(node.visibilityKeys);
}

void ReadPlacementMembers(eMembers& members, ePlacement& placement) {
    members.Optional("position", placement.position);
    members.Optional("rotation", placement.rotation);
    members.Optional("scale", placement.scale);
}

void ReadTransform(eJsonReader& json, eJsonIndex value, eTransform& transform) {
    eMembers members(json, value);
    members.Optional("matrix", transform.matrix);
    ReadPlacementMembers(members, transform.parts);
    if (transform.matrix && json.Tree().Count(value) > 1) {
        json.Report(value, eMessageId::DocumentMatrixAlone);
    }
}

void ReadTransformKey(eJsonReader& json, eJsonIndex value, bool isBesideMatrix, eTransformKey& key) {
    eMembers members(json, value);
    members.Required("frame", key.frame);
    members.Optional("position", key.position);
    members.Optional("rotation", key.rotation);
    members.Optional("scale", key.scale);
    // A rotation or scale can't replace a part of a matrix.
    if (isBesideMatrix && (key.rotation || key.scale)) {
        json.Report(value, eMessageId::DocumentMatrixKeys);
    }
}

void ReadKeys(eJsonReader& json, eJsonIndex list, eNodeData& node) {
    node.keys.reserve(json.Tree().Count(list));
    for (const eJsonIndex element : json.Elements(list)) {
        ReadTransformKey(json, element, node.transform.matrix.has_value(), node.keys.emplace_back());
    }
    SortByFrame(node.keys);
}

void ReadPlaces(eJsonReader& json, eMembers& members, eNodeData& node) {
    if (const eJsonIndex transform = members.Find("transform"); transform != kNoJson) {
        ReadTransform(json, transform, node.transform);
    }
    if (const eJsonIndex keys = members.Find("keys"); keys != kNoJson) {
        ReadKeys(json, keys, node);
    }
    if (const eJsonIndex offset = members.Find("offset"); offset != kNoJson) {
        eMembers parts(json, offset);
        ReadPlacementMembers(parts, node.offset);
    }
}

void ReadFlags(eJsonReader& json, eMembers& members, eNodeData& node) {
    members.Optional("hidden", node.hidden);
    members.Optional("selected", node.selected);
    members.Optional("renderable", node.renderable);
    if (const eJsonIndex group = members.Find("group"); group != kNoJson) {
        ReadGroup(json, group, node);
    }
    if (const eJsonIndex flags = members.Find("jointFlags"); flags != kNoJson) {
        ReadJointFlags(json, flags, node.jointFlags);
    }
    if (const eJsonIndex visibility = members.Find("visibility"); visibility != kNoJson) {
        ReadVisibility(json, visibility, node);
    }
}

void ReadNodeObject(eDocumentContext& context, eJsonIndex value, int& object) {
    if (context.json.Tree().Is(value, eJsonKind::Text)) {
        ReadObjectReference(context, value, object);
        return;
    }
    if (!context.json.Tree().Is(value, eJsonKind::Object)) {
        context.json.Report(value, eMessageId::DocumentExpected, Utf8Words(ePhrase::JsonObjectOrId));
        return;
    }
    object = static_cast<int>(context.scene.objects.size());
    eObjectData data;
    ReadObject(context, value, data);
    context.scene.objects.push_back(std::move(data));
}

void ReadReferences(eDocumentContext& context, eMembers& members, eNodeData& node) {
    if (const eJsonIndex object = members.Find("object"); object != kNoJson) {
        ReadNodeObject(context, object, node.object);
    }
    if (const eJsonIndex material = members.Find("material"); material != kNoJson) {
        ReadMaterialReference(context, material, node.material);
    }
    if (const eJsonIndex target = members.Find("target"); target != kNoJson) {
        ReadNodeReference(context, target, node.target);
    }
}

void ReadNode(eDocumentContext& context, eJsonIndex value, eNodeData& node) {
    eMembers members(context.json, value);
    members.Demand("name");
    members.Find("children");
    if (const eJsonIndex properties = members.Find("properties"); properties != kNoJson) {
        ReadProperties(context.json, properties, node.properties);
    }
    ReadFlags(context.json, members, node);
    ReadPlaces(context.json, members, node);
    ReadReferences(context, members, node);
}

}  // namespace

void CollectNodes(eDocumentContext& context, eJsonIndex list) {
    const eJsonTree& tree = context.json.Tree();
    std::vector<eOpenSiblings> open;
    const auto openList = [&](eJsonIndex siblings, int parent) {
        if (context.json.Expect(siblings, eJsonKind::Array)) {
            open.push_back({siblings + 1, tree.values[siblings].end, parent});
        }
    };

    openList(list, -1);
    while (!open.empty()) {
        eOpenSiblings& siblings = open.back();
        if (siblings.next == siblings.end) {
            open.pop_back();
            continue;
        }
        const eJsonIndex value = siblings.next;
        siblings.next = tree.values[value].end;
        if (!context.json.Expect(value, eJsonKind::Object)) {
            continue;
        }
        const int node = AddNode(context, value, siblings.parent);
        const eJsonIndex children = tree.FindMember(value, "children");
        if (children == kNoJson) {
            continue;
        }
        if (open.size() == kMaxNodeLevels && tree.Count(children) > 0) {
            context.json.Report(children, eMessageId::DocumentNesting, Utf8Words(ePhrase::NestedNodes),
                                kMaxNodeLevels);
            continue;
        }
        openList(children, node);
    }
}

void ReadNodes(eDocumentContext& context) {
    for (std::size_t node = 0; node < context.nodeValues.size(); ++node) {
        ReadNode(context, context.nodeValues[node], context.scene.nodes[node]);
    }
}

}  // namespace standalone
