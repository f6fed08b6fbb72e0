#pragma once

#include "host/material.h"
#include "standalone/objects/element.h"
#include "standalone/objects/scene.h"
#include "standalone/scene_data.h"

namespace standalone {

// How a surface with one diffuse map answers the light: ambient light and the lights' diffuse share, times
// the diffuse colour moved towards the map by its amount. `map` may be null.
void ShadeDiffuse(host::ShadeContext& context, const host::Color& diffuse, host::Texmap* map, float amount,
                  float opacity);

// What the two kinds of material with map slots have in common. `Base` is the host's class, `Record` the
// kind.
template <class Base, class Record>
class eMappedMtl : public eElement<Base> {
public:
    eMappedMtl(eScene& ownScene, std::size_t place, const eMaterialData& data, const Record& kind)
        : eElement<Base>(ownScene.hold, place), record(kind), scene(ownScene), mtlData(data) {}

    const std::string& GetName() const override { return mtlData.name; }
    // Nothing of a material changes with time.
    void Update(host::TimeValue, host::Interval&) override {}

    int NumSubTexmaps() const override { return kMapSlots; }
    host::Texmap* GetSubTexmap(int map) const override { return scene.Map(Slot(map).map); }

    host::Color GetDiffuse(int, bool) const override { return record.diffuse; }
    float GetXParency(int, bool) const override { return 1 - record.opacity; }

    void EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const override {
        for (int i = 0; i < kMapSlots; ++i) {
            if (const host::Texmap* map = GetSubTexmap(i)) {
                map->EnumAuxFiles(callback, flags);
            }
        }
    }

    void Shade(host::ShadeContext& context) override {
        const eMapSlot& slot = Slot(host::kDiffuseMap);
        ShadeDiffuse(context, record.diffuse, slot.enabled ? scene.Map(slot.map) : nullptr, slot.amount,
                     record.opacity);
    }

    int NumRefs() const override { return NumSubTexmaps(); }
    host::ReferenceTarget* GetReference(int reference) const override { return GetSubTexmap(reference); }

protected:
    const eMapSlot& Slot(int index) const { return record.maps[static_cast<std::size_t>(index)]; }

    const Record& record;

private:
    eScene& scene;
    const eMaterialData& mtlData;
};

}  // namespace standalone
