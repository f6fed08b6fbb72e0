#include "standalone/loaders/scene_document/scene_document_read_materials.h"

#include <algorithm>
#include <array>

#include "standalone/loaders/scene_document/scene_document_read_maps.h"
#include "standalone/loaders/scene_document/scene_document_words.h"

namespace standalone {
namespace {

void ReadSlot(eDocumentContext& context, eJsonIndex value, eMapSlot& slot) {
    eMembers members(context.json, value);
    if (const eJsonIndex map = members.Demand("map"); map != kNoJson) {
        slot.map = ReadMap(context, map);
    }
    members.Optional("amount", slot.amount);
    members.Optional("enabled", slot.enabled);
}

void ReadSlots(eDocumentContext& context, eMembers& members, eMapSlots& slots) {
    for (const eJsonIndex member : context.json.Entries(members.Find("maps"))) {
        const auto slot =
            std::find(kMapSlotWords.begin(), kMapSlotWords.end(), context.json.Tree().Key(member));
        if (slot == kMapSlotWords.end()) {
            context.json.Report(member, eMessageId::DocumentUnknownKey);
        } else {
            ReadSlot(context, member, slots[static_cast<std::size_t>(slot - kMapSlotWords.begin())]);
        }
    }
}

// An id, or null for none.
void ReadSubMaterial(eDocumentContext& context, eJsonIndex value, int& material) {
    if (!context.json.Tree().Is(value, eJsonKind::Null)) {
        ReadMaterialReference(context, value, material);
    }
}

eMaterialKind ReadStandard(eDocumentContext& context, eMembers& members) {
    eStandardMaterial material;
    members.Optional("ambient", material.ambient);
    members.Optional("diffuse", material.diffuse);
    members.Optional("specular", material.specular);
    if (members.Optional("shininess", material.shininess) &&
        !(material.shininess >= 0 && material.shininess <= 1)) {
        context.json.Report(members.Find("shininess"), eMessageId::DocumentRange, 0, 1);
    }
    members.Optional("shininessStrength", material.shininessStrength);
    members.Optional("opacity", material.opacity);
    members.Optional("twoSided", material.twoSided);
    ReadSlots(context, members, material.maps);
    return material;
}

eMaterialKind ReadMulti(eDocumentContext& context, eMembers& members) {
    eMultiMaterial multi;
    for (const eJsonIndex element : context.json.Elements(members.Demand("materials"))) {
        ReadSubMaterial(context, element, multi.materials.emplace_back(-1));
    }
    return multi;
}

eMaterialKind ReadTwoLayer(eDocumentContext& context, eMembers& members) {
    eTwoLayerMaterial layers;
    std::size_t layer = 0;
    for (const eJsonIndex element :
         context.json.Elements(members.Demand("materials"), layers.materials.size())) {
        ReadSubMaterial(context, element, layers.materials[layer++]);
    }
    return layers;
}

eMaterialKind ReadSorrel(eDocumentContext& context, eMembers& members) {
    eSorrelMaterial sorrel;
    if (const eJsonIndex material = members.Find("material"); material != kNoJson) {
        ReadMaterialReference(context, material, sorrel.material);
    }
    members.Optional("blend", sorrel.blend);
    members.Optional("modulate2x", sorrel.modulate2x);
    members.Optional("environment", sorrel.environment);
    members.Optional("strength", sorrel.strength);
    if (const eJsonIndex mask = members.Find("mask"); mask != kNoJson) {
        sorrel.mask = ReadMap(context, mask);
    }
    if (const eJsonIndex map = members.Find("environmentMap"); map != kNoJson) {
        sorrel.environmentMap = ReadMap(context, map);
    }
    return sorrel;
}

eMaterialKind ReadOther(eDocumentContext& context, eMembers& members) {
    eOtherMaterial other;
    members.Required("classId", other.classId);
    members.Optional("diffuse", other.diffuse);
    members.Optional("opacity", other.opacity);
    ReadSlots(context, members, other.maps);
    return other;
}

using eReadMaterial = eMaterialKind (*)(eDocumentContext&, eMembers&);

// By the place of the word in kMaterialWords.
constexpr std::array<eReadMaterial, kMaterialWords.size()> kMaterialReaders = {
    ReadStandard, ReadMulti, ReadTwoLayer, ReadSorrel, ReadOther};

void ReadMaterial(eDocumentContext& context, eJsonIndex value, eMaterialData& material) {
    int type = 0;
    if (!context.json.ReadType(value, kMaterialWords, type)) {
        return;
    }
    eMembers members(context.json, value);
    members.Optional("name", material.name);
    material.kind = kMaterialReaders[static_cast<std::size_t>(type)](context, members);
}

std::vector<int> SubMaterials(const eMaterialKind& kind) {
    if (const auto* const multi = std::get_if<eMultiMaterial>(&kind)) {
        return multi->materials;
    }
    if (const auto* const layers = std::get_if<eTwoLayerMaterial>(&kind)) {
        return {layers->materials.begin(), layers->materials.end()};
    }
    if (const auto* const sorrel = std::get_if<eSorrelMaterial>(&kind)) {
        return {sorrel->material};
    }
    return {};
}

// How deep the materials nest: `levels` of a material and what it holds. The levels of one that holds itself,
// directly or through others, and of all that hold such a one, are never settled.
struct eNesting {
    std::vector<int> levels;
    std::vector<bool> isSettled;
};

// Settles the materials from those that hold none upward, without recursion.
eNesting MeasureNesting(const std::vector<eMaterialData>& materials) {
    eNesting nesting{std::vector<int>(materials.size(), 1), std::vector<bool>(materials.size())};
    std::vector<std::vector<std::size_t>> holders(materials.size());
    std::vector<std::size_t> unsettledParts(materials.size());
    std::vector<std::size_t> settled;
    for (std::size_t material = 0; material < materials.size(); ++material) {
        for (const int part : SubMaterials(materials[material].kind)) {
            if (part >= 0) {
                holders[static_cast<std::size_t>(part)].push_back(material);
                ++unsettledParts[material];
            }
        }
        if (unsettledParts[material] == 0) {
            settled.push_back(material);
        }
    }
    for (std::size_t next = 0; next < settled.size(); ++next) {
        const std::size_t part = settled[next];
        nesting.isSettled[part] = true;
        for (const std::size_t holder : holders[part]) {
            nesting.levels[holder] = std::max(nesting.levels[holder], nesting.levels[part] + 1);
            if (--unsettledParts[holder] == 0) {
                settled.push_back(holder);
            }
        }
    }
    return nesting;
}

// Whoever walks a material walks what it holds, by recursion.
void CheckNesting(eDocumentContext& context, const eJsonChildren& section) {
    const eNesting nesting = MeasureNesting(context.scene.materials);
    std::size_t material = 0;
    for (const eJsonIndex value : section) {
        if (!nesting.isSettled[material]) {
            context.json.Report(value, eMessageId::DocumentHoldsItself);
        } else if (nesting.levels[material] > kMaxMaterialLevels) {
            context.json.Report(value, eMessageId::DocumentNesting, Utf8Words(ePhrase::NestedMaterials),
                                kMaxMaterialLevels);
        }
        ++material;
    }
}

}  // namespace

void ReadMaterials(eDocumentContext& context, const eJsonChildren& section) {
    std::size_t material = 0;
    for (const eJsonIndex value : section) {
        ReadMaterial(context, value, context.scene.materials[material++]);
    }
    CheckNesting(context, section);
}

}  // namespace standalone
