#include "standalone/loaders/scene_document/scene_document_read_context.h"

#include <cmath>
#include <limits>

#include "base/ansi.h"

namespace standalone {
namespace {

using eIds = std::unordered_map<std::string_view, int>;

bool ReadIdReference(eJsonReader& json, const eIds& ids, ePhrase what, eJsonIndex value, int& index) {
    if (!json.Expect(value, eJsonKind::Text)) {
        return false;
    }
    const std::string_view id = json.Tree().Text(value);
    const auto found = ids.find(id);
    if (found == ids.end()) {
        json.Report(value, eMessageId::DocumentNoSuchId, Utf8Words(what), id);
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
        context.json.Report(value, eMessageId::DocumentNoSuchNode, ToUtf8(name));
        return false;
    }
    node = found->second;
    return true;
}

void ReadNodeReferences(eDocumentContext& context, eJsonIndex list, std::vector<int>& nodes) {
    for (const eJsonIndex element : context.json.Elements(list)) {
        ReadNodeReference(context, element, nodes.emplace_back(-1));
    }
}

bool ReadMaterialReference(eDocumentContext& context, eJsonIndex value, int& material) {
    return ReadIdReference(context.json, context.materialIds, ePhrase::KindOfMaterial, value, material);
}

bool ReadObjectReference(eDocumentContext& context, eJsonIndex value, int& object) {
    return ReadIdReference(context.json, context.objectIds, ePhrase::KindOfObject, value, object);
}

void CheckFrame(eDocumentContext& context, eJsonIndex place, double frame) {
    if (std::fabs(frame) * context.scene.frameTicks > std::numeric_limits<host::TimeValue>::max()) {
        context.json.Report(place, eMessageId::DocumentFarFrame);
    }
}

}  // namespace standalone
