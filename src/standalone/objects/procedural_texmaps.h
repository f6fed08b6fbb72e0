#pragma once

#include "standalone/objects/texmap.h"

namespace standalone {

// Passes on its normal map; black without one.
class eNormalBumpTexmap : public eTexmap {
public:
    eNormalBumpTexmap(eScene& ownScene, std::size_t place, const eMapData& data, const eNormalBumpMap& map)
        : eTexmap(ownScene, place, data), bump(map) {}

    host::ClassId ClassID() const override { return host::kNormalBumpClass; }
    int NumSubTexmaps() const override { return 1; }
    host::Texmap* GetSubTexmap(int) const override { return Map(bump.normal); }
    host::AColor EvalColor(host::ShadeContext& context) override;

private:
    const eNormalBumpMap& bump;
};

// From the first map to the second by the third, or by the amount where that is missing. A missing map is
// black.
class eMixTexmap : public eTexmap {
public:
    eMixTexmap(eScene& ownScene, std::size_t place, const eMapData& data, const eMixMap& map)
        : eTexmap(ownScene, place, data), mix(map) {}

    host::ClassId ClassID() const override { return host::kMixClass; }
    int NumSubTexmaps() const override { return static_cast<int>(mix.maps.size()); }
    host::Texmap* GetSubTexmap(int map) const override {
        return Map(mix.maps[static_cast<std::size_t>(map)]);
    }
    host::AColor EvalColor(host::ShadeContext& context) override;

private:
    const eMixMap& mix;
};

// Product of two maps, component by component. A missing map is white.
class eRgbMultiplyTexmap : public eTexmap {
public:
    eRgbMultiplyTexmap(eScene& ownScene, std::size_t place, const eMapData& data, const eRgbMultiplyMap& map)
        : eTexmap(ownScene, place, data), multiply(map) {}

    host::ClassId ClassID() const override { return host::kRgbMultiplyClass; }
    int NumSubTexmaps() const override { return static_cast<int>(multiply.maps.size()); }
    host::Texmap* GetSubTexmap(int map) const override {
        return Map(multiply.maps[static_cast<std::size_t>(map)]);
    }
    host::AColor EvalColor(host::ShadeContext& context) override;

private:
    const eRgbMultiplyMap& multiply;
};

// Two by two cells to the unit square, without filter.
class eCheckerTexmap : public eTexmap {
public:
    eCheckerTexmap(eScene& ownScene, std::size_t place, const eMapData& data, const eCheckerMap& map)
        : eTexmap(ownScene, place, data), checker(map) {}

    host::ClassId ClassID() const override { return {0x200, 0}; }
    host::AColor EvalColor(host::ShadeContext& context) override;

private:
    const eCheckerMap& checker;
};

// One colour everywhere: the vertex colour map, whose colours only a mesh knows, and maps known by class
// alone.
class ePlainTexmap : public eTexmap {
public:
    ePlainTexmap(eScene& ownScene, std::size_t place, const eMapData& data, const host::ClassId& id,
                 const host::Color& mapColor)
        : eTexmap(ownScene, place, data), classId(id), color(mapColor) {}

    host::ClassId ClassID() const override { return classId; }
    host::AColor EvalColor(host::ShadeContext&) override { return {color.r, color.g, color.b, 1}; }

private:
    host::ClassId classId;
    host::Color color;
};

}  // namespace standalone
