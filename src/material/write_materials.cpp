#include "material/write_materials.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/format.h"
#include "material/queries/material_queries.h"
#include "material/queries/sorrel.h"
#include "material/queries/texture_slot.h"
#include "material/run_materials.h"
#include "material/textures/texture_claim.h"
#include "material/textures/texture_name.h"
#include "material/textures/write_texture.h"
#include "messages/phrase.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "run/tell.h"

namespace {

using host::Mtl;

// What is read of a material before its record is made.
struct eMaterialTraits {
    int slots = 1;
    bool twoLayer = false;
    bool hasBump = false;
    bool hasSpecular = false;
    bool multiply = false;
    eSorrelParameters sorrel;

    bool IsEnvmap() const { return sorrel.environment != 0; }
};

eMaterialTraits ReadTraits(Mtl* material) {
    eMaterialTraits traits;
    traits.sorrel = ReadSorrelParameters(material);
    if (traits.IsEnvmap()) {
        traits.slots =
            1 + (traits.sorrel.mask != nullptr ? 1 : 0) + (traits.sorrel.environmentMap != nullptr ? 1 : 0);
        return traits;
    }
    traits.slots = GetSlotCount(material);
    traits.twoLayer = IsTwoLayer(material);
    traits.hasBump = GetBumpAmount(material) > 0;
    traits.hasSpecular = GetSpecularAmount(material) > 0;
    traits.multiply = IsMultiply(material);
    return traits;
}

const char* TypeOf(const eMaterialTraits& traits) {
    if (traits.IsEnvmap()) {
        return "envmap";
    }
    if (traits.slots == 1) {
        return "simple";
    }
    if (traits.slots == 2 && traits.multiply) {
        return "multiply";
    }
    return traits.twoLayer ? "blend" : "bump";
}

const char* BlendOf(const Mtl* material, const eSorrelParameters& sorrel) {
    static constexpr const char* kBlends[] = {"none", "test", "blend", "add", "sub"};
    if (sorrel.blend >= 0 && sorrel.blend < static_cast<int>(std::size(kBlends))) {
        return kBlends[sorrel.blend];
    }
    return material != nullptr && material->GetXParency(0, false) > 0 ? "blend" : "none";
}

eSlotTexmap TexmapOfSlot(Mtl* material, const eMaterialTraits& traits, int slot) {
    if (!traits.IsEnvmap() || slot == 0) {
        return GetSlotTexmap(material, slot);
    }
    const eSorrelParameters& sorrel = traits.sorrel;
    return {slot == 1 && sorrel.mask != nullptr ? sorrel.mask : sorrel.environmentMap};
}

// Null for a fourth slot, of two layers with bump and specular level map: its texture has no field.
std::string* FieldOfSlot(eExportMaterial& record, const eMaterialTraits& traits, int slot) {
    if (slot == 0) {
        return &record.diffuse;
    }
    if (slot > 2) {
        return nullptr;
    }
    if (traits.IsEnvmap()) {
        return slot == 1 && traits.sorrel.mask != nullptr ? &record.mask : &record.envmap;
    }
    if (traits.twoLayer) {
        return &record.diffuse1;
    }
    return slot == 1 && traits.hasBump ? &record.bump : &record.specular;
}

std::string MakeSlotTexture(Export& run, Mtl* material, const eSlotTexmap& source, int slot,
                            const eExportMaterialUse& use, host::TimeValue t) {
    eExportTexture texture;
    texture.texmap = source.map;
    texture.role = RoleOf(material, source);
    texture.slot = slot;
    texture.materialIndex = use.index;
    MakeTextureName(run, texture);
    MakeTargetPath(run, texture);
    if (ClaimTexture(run, texture, material)) {
        WriteTexture(run, texture, material, static_cast<int>(use.sizeU), static_cast<int>(use.sizeV), t);
    }
    return GetEngineTextureName(texture);
}

eExportMaterial MakeMaterial(Export& run, Mtl* material, const eExportMaterialUse& use) {
    const eMaterialTraits traits = ReadTraits(material);
    const host::TimeValue t = host::TimeOfFrame(*run.host, run.frameStart);
    eExportMaterial record;
    record.name = GetMaterialName(material);
    record.type = TypeOf(traits);
    if (material != nullptr) {
        host::Interval valid = host::kForever;
        material->Update(t, valid);
    }
    for (int slot = 0; slot < traits.slots; ++slot) {
        const eSlotTexmap source = TexmapOfSlot(material, traits, slot);
        const std::string name = MakeSlotTexture(run, material, source, slot, use, t);
        if (std::string* const field = FieldOfSlot(record, traits, slot)) {
            *field = name;
        }
    }
    if (traits.IsEnvmap() && traits.sorrel.mask == nullptr) {
        record.amount = traits.sorrel.strength;
    }
    if (traits.hasSpecular) {
        record.color = GetSpecularColor(material);
    }
    record.blend = BlendOf(material, traits.sorrel);
    record.modulate2x = traits.multiply && traits.sorrel.modulate2x != 0;
    return record;
}

// Where the mesh is that uses the material first.
std::string UserOf(const eExportMaterialUse& use) {
    return use.node != nullptr ? host::PathOf(*use.node) : std::string();
}

// Two different materials with one name: the first record stays.
void CheckDuplicateNames(Export& run) {
    std::set<std::string> keys;
    for (const auto& [key, use] : run.materials->materialMap) {
        const std::string name = GetMaterialName(key.material);
        const std::string text = (format("%s~^&*%d") % name % key.group).Text();
        if (!keys.insert(LowerAnsi(text)).second) {
            Tell(run, eMessageId::MaterialsDuplicateName, {.node = UserOf(use), .material = name}, name);
        }
    }
}

// A material gets its record by its first palette; one that occurs in later palettes alone has none.
void WarnWithoutRecord(Export& run, const Mtl* material, const eExportMaterialUse& use) {
    const std::string name = GetMaterialName(material);
    Tell(run, eMessageId::MaterialsPaletteOnly, {.node = UserOf(use), .material = name}, name,
         use.node != nullptr ? use.node->GetName() : std::string());
}

void AddRecord(eExportResourceSet& set, eExportMaterial record) {
    if (std::ranges::find(set.materials, record.name, &eExportMaterial::name) == set.materials.end()) {
        set.materials.push_back(std::move(record));
    }
}

// Progress in whole percent; asks for a cancel whenever another percent is done.
class ePercentProgress {
public:
    ePercentProgress(host::Interface& hostInterface, std::size_t steps)
        : host(hostInterface), step(100.0F / static_cast<float>(std::max<std::size_t>(steps, 1))) {}

    // False if the user has cancelled.
    bool Advance() {
        total += step;
        sum += step;
        if (sum < 1) {
            return true;
        }
        sum = 0;
        if (host.GetCancel()) {
            return false;
        }
        host.ProgressUpdate(static_cast<int>(total));
        return true;
    }

private:
    host::Interface& host;
    float step;
    float sum = 0;
    float total = 0;
};

}  // namespace

void WriteMaterials(Export& run, bool useCommon) {
    CheckDuplicateNames(run);
    run.host->ProgressStart(Words(ePhrase::StageTextures).russian);
    eExportResourceSet& set = useCommon ? run.resources->commonResources : run.resources->modelResources;
    ePercentProgress progress(*run.host, run.materials->materialMap.size());
    const Mtl* previous = nullptr;  // the map is ordered by material, then by palette
    for (const auto& [key, use] : run.materials->materialMap) {
        if (key.group != 0) {
            if (key.material != previous) {
                WarnWithoutRecord(run, key.material, use);
            }
            previous = key.material;
            continue;
        }
        previous = key.material;
        AddRecord(set, MakeMaterial(run, key.material, use));
        if (!progress.Advance()) {
            break;
        }
    }
}
