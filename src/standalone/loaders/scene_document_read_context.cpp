#include "standalone/loaders/scene_document_read_context.h"

#include "base/ansi.h"

namespace standalone {
namespace {

using eIds = std::unordered_map<std::string_view, int>;

bool ReadIdReference(eJsonReader& json, const eIds& ids, std::string_view what, eJsonIndex value,
                     int& index) {
    if (!json.Expect(value, eJsonKind::Text)) {
        return false;
    }
    const std::string_view id = json.Tree().Text(value);
    const auto found = ids.find(id);
    if (found == ids.end()) {
        json.Report(value, "there is no " + std::string(what) + " with the id \"" + std::string(id) + '"');
        return false;
    }
    index = found->second;
    return true;
}

}  // namespace

bool ReadNodeReference(eDocumentContext& context, eJsonIndex value, int& node) {
    std::string name;
    if (!context.json.Read(value, name)) {
        return false;
    }
    const auto found = context.nodesByName.find(LowerAnsi(name));
    if (found == context.nodesByName.end()) {
        context.json.Report(value, "there is no node with the name \"" + ToUtf8(name) + '"');
        return false;
    }
    node = found->second;
    return true;
}

bool ReadNodeReferences(eDocumentContext& context, eJsonIndex list, std::vector<int>& nodes) {
    if (!context.json.Expect(list, eJsonKind::Array)) {
        return false;
    }
    bool isGood = true;
    for (const eJsonIndex element : context.json.Tree().Children(list)) {
        int node = -1;
        isGood = ReadNodeReference(context, element, node) && isGood;
        nodes.push_back(node);
    }
    return isGood;
}

bool ReadMaterialReference(eDocumentContext& context, eJsonIndex value, int& material) {
    return ReadIdReference(context.json, context.materialIds, "material", value, material);
}

bool ReadObjectReference(eDocumentContext& context, eJsonIndex value, int& object) {
    return ReadIdReference(context.json, context.objectIds, "object", value, object);
}

}  // namespace standalone
