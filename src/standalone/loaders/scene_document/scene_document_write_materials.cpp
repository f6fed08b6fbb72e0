#include "standalone/loaders/scene_document/scene_document_write_materials.h"

#include <algorithm>
#include <span>

#include "base/ansi.h"
#include "standalone/data/scene_path.h"
#include "standalone/loaders/scene_document/scene_document_words.h"

namespace standalone {
namespace {

void WriteMap(eDocumentOutput& output, int map);

void WriteInputs(eDocumentOutput& output, std::span<const int> inputs) {
    if (std::all_of(inputs.begin(), inputs.end(), [](int map) { return map < 0; })) {
        return;
    }
    output.json.Key("maps");
    output.json.BeginList();
    for (const int map : inputs) {
        if (map < 0) {
            output.json.Null();
        } else {
            WriteMap(output, map);
        }
    }
    output.json.EndList();
}

void WriteBitmap(eDocumentOutput& output, const eBitmapMap& bitmap) {
    const eBitmapMap standard;
    eJsonWriter& json = output.json;
    const bool isBesideScene = bitmap.onDisk.empty() && !bitmap.file.empty() && !IsAbsolutePath(bitmap.file);
    json.MemberUnless(std::string(), "file",
                      (isBesideScene ? output.bitmapFolder : std::string()) + bitmap.file);
    if (bitmap.cropOrigin != standard.cropOrigin || bitmap.cropSize != standard.cropSize) {
        json.Key("crop");
        json.BeginList();
        for (const host::Point2& point : {bitmap.cropOrigin, bitmap.cropSize}) {
            json.Value(point.x);
            json.Value(point.y);
        }
        json.EndList();
    }
    json.MemberUnless(standard.amount, "amount", bitmap.amount);
    json.MemberUnless(standard.invert, "invert", bitmap.invert);
}

// What a map has besides its type, name and coordinates.
struct eMapMembers {
    eDocumentOutput& output;
    eJsonWriter& json = output.json;

    void operator()(const eBitmapMap& bitmap) { WriteBitmap(output, bitmap); }

    void operator()(const eNormalBumpMap& bump) {
        if (bump.normal >= 0) {
            json.Key("normal");
            WriteMap(output, bump.normal);
        }
    }

    void operator()(const eMixMap& mix) {
        WriteInputs(output, mix.maps);
        json.MemberUnless(eMixMap{}.amount, "amount", mix.amount);
    }

    void operator()(const eRgbMultiplyMap& product) { WriteInputs(output, product.maps); }

    void operator()(const eVertexColorMap&) {}

    void operator()(const eCheckerMap& checker) {
        json.Member("colors", std::vector<host::Color>(checker.colors.begin(), checker.colors.end()));
    }

    void operator()(const eOtherMap& other) {
        json.Member("classId", other.classId);
        json.MemberUnless(host::Color{}, "color", other.color);
    }
};

void WriteCoordinates(eJsonWriter& json, const eMapCoordinates& coordinates) {
    const eMapCoordinates standard;
    if (coordinates == standard) {
        return;
    }
    json.Key("uv");
    json.BeginObject();
    json.MemberUnless(standard.source, "source", coordinates.source);
    json.MemberUnless(standard.channel, "channel", coordinates.channel);
    json.MemberUnless(standard.offset, "offset", coordinates.offset);
    json.MemberUnless(standard.tiling, "tiling", coordinates.tiling);
    json.MemberUnless(standard.angle, "angle", coordinates.angle);
    json.EndObject();
}

void WriteMap(eDocumentOutput& output, int map) {
    const eMapData& data = output.scene.maps[static_cast<std::size_t>(map)];
    output.json.BeginObject();
    output.json.Member("type", kMapWords[data.kind.index()]);
    std::visit(eMapMembers{output}, data.kind);
    output.json.MemberUnless(std::string(), "name", data.name);
    WriteCoordinates(output.json, data.coordinates);
    output.json.EndObject();
}

// The slots in use, in the order of their maps in the scene, so that a reader numbers the maps alike.
std::vector<std::size_t> SlotsByMap(const eMapSlots& slots) {
    std::vector<std::size_t> used;
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        if (slots[slot].map >= 0) {
            used.push_back(slot);
        }
    }
    std::stable_sort(used.begin(), used.end(),
                     [&](std::size_t left, std::size_t right) { return slots[left].map < slots[right].map; });
    return used;
}

void WriteSlots(eDocumentOutput& output, const eMapSlots& slots) {
    const std::vector<std::size_t> used = SlotsByMap(slots);
    if (used.empty()) {
        return;
    }
    eJsonWriter& json = output.json;
    json.Key("maps");
    json.BeginObject();
    for (const std::size_t slot : used) {
        json.Key(kMapSlotWords[slot]);
        json.BeginObject();
        json.Key("map");
        WriteMap(output, slots[slot].map);
        json.MemberUnless(eMapSlot{}.amount, "amount", slots[slot].amount);
        json.MemberUnless(eMapSlot{}.enabled, "enabled", slots[slot].enabled);
        json.EndObject();
    }
    json.EndObject();
}

void WriteSubMaterials(eDocumentOutput& output, std::span<const int> materials) {
    output.json.Key("materials");
    output.json.BeginList();
    for (const int material : materials) {
        if (material < 0) {
            output.json.Null();
        } else {
            output.json.Value(output.materialIds[static_cast<std::size_t>(material)]);
        }
    }
    output.json.EndList();
}

// What a material has besides its type and name.
struct eMaterialMembers {
    eDocumentOutput& output;
    eJsonWriter& json = output.json;

    void operator()(const eStandardMaterial& material) {
        const eStandardMaterial standard;
        json.MemberUnless(standard.ambient, "ambient", material.ambient);
        json.MemberUnless(standard.diffuse, "diffuse", material.diffuse);
        json.MemberUnless(standard.specular, "specular", material.specular);
        json.MemberUnless(standard.shininess, "shininess", material.shininess);
        json.MemberUnless(standard.shininessStrength, "shininessStrength", material.shininessStrength);
        json.MemberUnless(standard.opacity, "opacity", material.opacity);
        json.MemberUnless(standard.twoSided, "twoSided", material.twoSided);
        WriteSlots(output, material.maps);
    }

    void operator()(const eMultiMaterial& multi) { WriteSubMaterials(output, multi.materials); }

    void operator()(const eTwoLayerMaterial& layers) { WriteSubMaterials(output, layers.materials); }

    void operator()(const eSorrelMaterial& sorrel) {
        const eSorrelMaterial standard;
        if (sorrel.material >= 0) {
            json.Member("material", output.materialIds[static_cast<std::size_t>(sorrel.material)]);
        }
        json.MemberUnless(standard.blend, "blend", sorrel.blend);
        json.MemberUnless(standard.modulate2x, "modulate2x", sorrel.modulate2x);
        json.MemberUnless(standard.environment, "environment", sorrel.environment);
        json.MemberUnless(standard.strength, "strength", sorrel.strength);
        if (sorrel.mask >= 0) {
            json.Key("mask");
            WriteMap(output, sorrel.mask);
        }
        if (sorrel.environmentMap >= 0) {
            json.Key("environmentMap");
            WriteMap(output, sorrel.environmentMap);
        }
    }

    void operator()(const eOtherMaterial& other) {
        const eOtherMaterial standard;
        json.Member("classId", other.classId);
        json.MemberUnless(standard.diffuse, "diffuse", other.diffuse);
        json.MemberUnless(standard.opacity, "opacity", other.opacity);
        WriteSlots(output, other.maps);
    }
};

}  // namespace

void WriteMaterials(eDocumentOutput& output) {
    if (output.scene.materials.empty()) {
        return;
    }
    output.json.Key("materials");
    output.json.BeginObject();
    std::size_t id = 0;
    for (const eMaterialData& material : output.scene.materials) {
        output.json.Key(output.materialIds[id++]);
        output.json.BeginObject();
        output.json.Member("type", kMaterialWords[material.kind.index()]);
        output.json.MemberUnless(std::string(), "name", material.name);
        std::visit(eMaterialMembers{output}, material.kind);
        output.json.EndObject();
    }
    output.json.EndObject();
}

}  // namespace standalone
