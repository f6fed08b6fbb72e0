#include "standalone/loaders/scene_document/scene_document_write_nodes.h"

#include "standalone/loaders/scene_document/scene_document_words.h"
#include "standalone/loaders/scene_document/scene_document_write_objects.h"

namespace standalone {
namespace {

// The lines between CR LF; joined again they are the same text, whatever it holds.
void WriteProperties(eJsonWriter& json, std::string_view properties) {
    constexpr std::string_view lineEnd = "\r\n";
    if (properties.empty()) {
        return;
    }
    json.Key("properties");
    json.BeginList();
    for (std::size_t end = properties.find(lineEnd); end != std::string_view::npos;
         end = properties.find(lineEnd)) {
        json.Value(properties.substr(0, end));
        properties.remove_prefix(end + lineEnd.size());
    }
    json.Value(properties);
    json.EndList();
}

void WriteGroup(eJsonWriter& json, const eNodeData& node) {
    if (node.groupHead && node.groupMember) {
        json.Member("group", std::vector<std::string>{"head", "member"});
    } else if (node.groupHead || node.groupMember) {
        json.Member("group", node.groupHead ? "head" : "member");
    }
}

void WriteJointFlags(eJsonWriter& json, std::uint32_t flags) {
    if (flags == 0) {
        return;
    }
    json.Key("jointFlags");
    json.BeginList();
    for (int bit = 0; bit < kJointFlagBits; ++bit) {
        if ((flags >> bit & 1U) != 0) {
            json.Value(bit);
        }
    }
    json.EndList();
}

void WriteVisibility(eJsonWriter& json, const eNodeData& node) {
    if (node.visibilityKeys.empty()) {
        json.MemberUnless(1.0F, "visibility", node.visibility);
        return;
    }
    json.Key("visibility");
    json.BeginList();
    for (const eVisibilityKey& key : node.visibilityKeys) {
        json.BeginList();
        json.Value(key.frame);
        json.Value(key.value);
        json.EndList();
    }
    json.EndList();
}

void WritePlacementMembers(eJsonWriter& json, const ePlacement& placement) {
    const ePlacement identity;
    json.MemberUnless(identity.position, "position", placement.position);
    json.MemberUnless(identity.rotation, "rotation", placement.rotation);
    json.MemberUnless(identity.scale, "scale", placement.scale);
}

void WriteTransform(eJsonWriter& json, const eTransform& transform) {
    if (transform == eTransform{}) {
        return;
    }
    json.Key("transform");
    json.BeginObject();
    if (transform.matrix) {
        json.Member("matrix", *transform.matrix);
    } else {
        WritePlacementMembers(json, transform.parts);
    }
    json.EndObject();
}

void WriteTransformKey(eJsonWriter& json, const eTransformKey& key) {
    json.BeginObject();
    json.Member("frame", key.frame);
    if (key.position) {
        json.Member("position", *key.position);
    }
    if (key.rotation) {
        json.Member("rotation", *key.rotation);
    }
    if (key.scale) {
        json.Member("scale", *key.scale);
    }
    json.EndObject();
}

void WriteKeys(eJsonWriter& json, const std::vector<eTransformKey>& keys) {
    if (keys.empty()) {
        return;
    }
    json.Key("keys");
    json.BeginList();
    for (const eTransformKey& key : keys) {
        WriteTransformKey(json, key);
    }
    json.EndList();
}

void WriteOffset(eJsonWriter& json, const ePlacement& offset) {
    if (offset == ePlacement{}) {
        return;
    }
    json.Key("offset");
    json.BeginObject();
    WritePlacementMembers(json, offset);
    json.EndObject();
}

void WriteNodeReferencesOf(eDocumentOutput& output, const eNodeData& node) {
    eJsonWriter& json = output.json;
    if (node.object >= 0) {
        const auto object = static_cast<std::size_t>(node.object);
        json.Key("object");
        if (output.objectIds[object].empty()) {
            WriteObject(output, output.scene.objects[object]);
        } else {
            json.Value(output.objectIds[object]);
        }
    }
    if (node.material >= 0) {
        json.Member("material", output.materialIds[static_cast<std::size_t>(node.material)]);
    }
    if (node.target >= 0) {
        json.Member("target", output.nodeNames[static_cast<std::size_t>(node.target)]);
    }
}

void WriteNodeMembers(eDocumentOutput& output, int index) {
    const eNodeData& node = output.scene.nodes[static_cast<std::size_t>(index)];
    eJsonWriter& json = output.json;
    json.Member("name", output.nodeNames[static_cast<std::size_t>(index)]);
    WriteProperties(json, node.properties);
    json.MemberUnless(false, "hidden", node.hidden);
    json.MemberUnless(false, "selected", node.selected);
    json.MemberUnless(true, "renderable", node.renderable);
    WriteGroup(json, node);
    WriteJointFlags(json, node.jointFlags);
    WriteVisibility(json, node);
    WriteTransform(json, node.transform);
    WriteKeys(json, node.keys);
    WriteOffset(json, node.offset);
    WriteNodeReferencesOf(output, node);
}

}  // namespace

void WriteNodes(eDocumentOutput& output) {
    struct eOpenSiblings {
        const std::vector<int>* nodes;
        std::size_t next;
    };
    eJsonWriter& json = output.json;
    json.Key("nodes");
    json.BeginList();
    std::vector<eOpenSiblings> open = {{&output.scene.roots, 0}};
    while (!open.empty()) {
        eOpenSiblings& siblings = open.back();
        if (siblings.next == siblings.nodes->size()) {
            json.EndList();
            open.pop_back();
            if (!open.empty()) {
                json.EndObject();
            }
            continue;
        }
        const int node = (*siblings.nodes)[siblings.next++];
        const std::vector<int>& children = output.scene.nodes[static_cast<std::size_t>(node)].children;
        json.BeginObject();
        WriteNodeMembers(output, node);
        if (children.empty()) {
            json.EndObject();
        } else {
            json.Key("children");
            json.BeginList();
            open.push_back({&children, 0});
        }
    }
}

}  // namespace standalone
