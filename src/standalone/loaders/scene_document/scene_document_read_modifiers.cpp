#include "standalone/loaders/scene_document/scene_document_read_modifiers.h"

#include <array>

#include "standalone/loaders/scene_document/scene_document_words.h"

namespace standalone {
namespace {

void ReadWeight(eJsonReader& json, eJsonIndex value, std::size_t boneCount, eSkinWeight& weight) {
    if (!json.ExpectCount(value, 2)) {
        return;
    }
    const eJsonIndex bone = value + 1;
    std::int64_t number = 0;
    if (json.ReadIndex(bone, boneCount, number)) {
        weight.bone = static_cast<int>(number);
    }
    json.Read(json.Tree().values[bone].end, weight.weight);
}

void ReadWeights(eJsonReader& json, eJsonIndex list, eSkinModifier& skin) {
    skin.firstWeight.reserve(json.Tree().Count(list) + 1);
    skin.firstWeight.push_back(0);
    for (const eJsonIndex vertex : json.Elements(list)) {
        for (const eJsonIndex pair : json.Elements(vertex)) {
            ReadWeight(json, pair, skin.bones.size(), skin.weights.emplace_back());
        }
        skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
    }
}

eModifierKind ReadSkin(eDocumentContext& context, eMembers& members, const eObjectKind& object) {
    eSkinModifier skin;
    if (const eJsonIndex bones = members.Demand("bones"); bones != kNoJson) {
        ReadNodeReferences(context, bones, skin.bones);
    }
    const auto* const mesh = std::get_if<eMeshObject>(&object);
    const eJsonIndex weights = members.Demand("weights");
    // Only a mesh says in the document how many vertices it has.
    if (weights != kNoJson &&
        (mesh == nullptr || context.json.ExpectCount(weights, mesh->mesh.verts.size()))) {
        ReadWeights(context.json, weights, skin);
    }
    if (members.Optional("bindFrame", skin.bindFrame)) {
        CheckFrame(context, members.Find("bindFrame"), skin.bindFrame);
    }
    const eJsonIndex matrices = members.Find("bindMatrices");
    if (matrices != kNoJson && context.json.ExpectCount(matrices, skin.bones.size())) {
        context.json.Read(matrices, skin.bindMatrices);
    }
    return skin;
}

eModifierKind ReadOther(eDocumentContext&, eMembers& members, const eObjectKind&) {
    eOtherModifier other;
    members.Required("classId", other.classId);
    return other;
}

using eReadModifier = eModifierKind (*)(eDocumentContext&, eMembers&, const eObjectKind&);

// By the place of the word in kModifierWords.
constexpr std::array<eReadModifier, kModifierWords.size()> kModifierReaders = {ReadSkin, ReadOther};

}  // namespace

void ReadModifiers(eDocumentContext& context, eJsonIndex list, eObjectData& object) {
    for (const eJsonIndex element : context.json.Elements(list)) {
        int type = 0;
        if (context.json.ReadType(element, kModifierWords, type)) {
            eMembers members(context.json, element);
            object.modifiers.push_back(
                kModifierReaders[static_cast<std::size_t>(type)](context, members, object.kind));
        }
    }
}

}  // namespace standalone
