#pragma once

#include <memory>

#include "host/material.h"
#include "standalone/objects/element.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;

// What all maps have in common: name, coordinates, and sub-maps by their number in the document.
class eTexmap : public eElement<host::Texmap> {
public:
    // The record must outlive the map.
    eTexmap(eScene& scene, std::size_t place, const eMapData& data);

    const std::string& GetName() const override { return mapData.name; }
    // Nothing of a map changes with time.
    void Update(host::TimeValue, host::Interval&) override {}

    host::Matrix3 GetUVTransform() const override { return transform; }
    int GetUVWSource() const override { return mapData.coordinates.source; }
    int GetMapChannel() const override { return mapData.coordinates.channel; }

    // The mean of red, green and blue.
    float EvalMono(host::ShadeContext& context) override;

    void EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const override;
    int NumRefs() const override { return NumSubTexmaps(); }
    host::ReferenceTarget* GetReference(int reference) const override { return GetSubTexmap(reference); }

protected:
    host::Texmap* Map(int number) const;
    // The point on the map. The surface coordinates stand in for object and world coordinates, too: an
    // exporter gives both alike, and has taken the map's own transform out of the former only.
    host::DPoint2 Coordinates(const host::ShadeContext& context) const;

    eScene& scene;

private:
    const eMapData& mapData;
    host::Matrix3 transform;
    int channel;  // to ask the context for
};

// The map of a record.
std::unique_ptr<host::Texmap> MakeTexmap(eScene& scene, std::size_t place, const eMapData& data);

}  // namespace standalone
