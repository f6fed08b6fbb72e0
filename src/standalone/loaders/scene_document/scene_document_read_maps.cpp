#include "standalone/loaders/scene_document/scene_document_read_maps.h"

#include <array>
#include <span>

#include "platform/path_text.h"
#include "standalone/loaders/scene_document/scene_document_words.h"

namespace standalone {
namespace {

int ReadMapAt(eDocumentContext& context, eJsonIndex value, int level);

// What the reader of one type of map is given.
struct eMapReading {
    eDocumentContext& context;
    eMembers& members;
    int level;  // of this map, 1 for one in a material's slot
};

void ReadCoordinates(eDocumentContext& context, eJsonIndex value, eMapCoordinates& coordinates) {
    eMembers members(context.json, value);
    members.Optional("source", 0, 3, coordinates.source);
    members.Optional("channel", kFirstMapChannel, kLastMapChannel, coordinates.channel);
    members.Optional("offset", coordinates.offset);
    members.Optional("tiling", coordinates.tiling);
    members.Optional("angle", coordinates.angle);
}

// A list of at most that many maps, null for an empty input.
void ReadInputs(const eMapReading& reading, std::span<int> inputs) {
    const eJsonIndex list = reading.members.Find("maps");
    eJsonReader& json = reading.context.json;
    if (list != kNoJson && json.Tree().Count(list) > inputs.size()) {
        json.Report(list, eMessageId::DocumentTooManyMaps, inputs.size());
        return;
    }
    std::size_t input = 0;
    for (const eJsonIndex element : json.Elements(list)) {
        if (!json.Tree().Is(element, eJsonKind::Null)) {
            inputs[input] = ReadMapAt(reading.context, element, reading.level + 1);
        }
        ++input;
    }
}

eMapKind ReadBitmap(const eMapReading& reading) {
    eBitmapMap bitmap;
    // Textures are named after their pictures, so that the name, unlike its folder, must be one of the code
    // page.
    if (reading.members.OptionalPath("file", bitmap.file) &&
        platform::HasEscape(bitmap.file.substr(bitmap.file.find_last_of("/\\") + 1))) {
        reading.members.Optional("file", bitmap.file);
    }
    if (const eJsonIndex crop = reading.members.Find("crop"); crop != kNoJson) {
        std::array<float, 4> corners{};
        if (reading.context.json.ReadNumbers(crop, corners)) {
            bitmap.cropOrigin = {corners[0], corners[1]};
            bitmap.cropSize = {corners[2], corners[3]};
        }
    }
    reading.members.Optional("amount", bitmap.amount);
    reading.members.Optional("invert", bitmap.invert);
    return bitmap;
}

eMapKind ReadNormalBump(const eMapReading& reading) {
    eNormalBumpMap bump;
    if (const eJsonIndex normal = reading.members.Find("normal"); normal != kNoJson) {
        bump.normal = ReadMapAt(reading.context, normal, reading.level + 1);
    }
    return bump;
}

eMapKind ReadMix(const eMapReading& reading) {
    eMixMap mix;
    ReadInputs(reading, mix.maps);
    if (reading.members.Optional("amount", mix.amount) && !(mix.amount >= 0 && mix.amount <= 1)) {
        reading.context.json.Report(reading.members.Find("amount"), eMessageId::DocumentRange, 0, 1);
    }
    return mix;
}

eMapKind ReadRgbMultiply(const eMapReading& reading) {
    eRgbMultiplyMap product;
    ReadInputs(reading, product.maps);
    return product;
}

eMapKind ReadVertexColor(const eMapReading&) {
    return eVertexColorMap{};
}

eMapKind ReadChecker(const eMapReading& reading) {
    eCheckerMap checker;
    std::vector<host::Color> colors;
    const eJsonIndex list = reading.members.Demand("colors");
    if (list != kNoJson && reading.context.json.ExpectCount(list, checker.colors.size()) &&
        reading.context.json.Read(list, colors)) {
        checker.colors = {colors[0], colors[1]};
    }
    return checker;
}

eMapKind ReadOther(const eMapReading& reading) {
    eOtherMap other;
    reading.members.Required("classId", other.classId);
    reading.members.Optional("color", other.color);
    return other;
}

using eReadMap = eMapKind (*)(const eMapReading&);

// By the place of the word in kMapWords.
constexpr std::array<eReadMap, kMapWords.size()> kMapReaders = {
    ReadBitmap, ReadNormalBump, ReadMix, ReadRgbMultiply, ReadVertexColor, ReadChecker, ReadOther};

int ReadMapAt(eDocumentContext& context, eJsonIndex value, int level) {
    if (level > kMaxMapLevels) {
        context.json.Report(value, eMessageId::DocumentNesting, Utf8Words(ePhrase::NestedMaps),
                            kMaxMapLevels);
        return -1;
    }
    int type = 0;
    if (!context.json.ReadType(value, kMapWords, type)) {
        return -1;
    }
    // The map's place comes before those of the maps below it.
    const std::size_t map = context.scene.maps.size();
    context.scene.maps.emplace_back();
    eMapData data;
    eMembers members(context.json, value);
    members.Optional("name", data.name);
    if (const eJsonIndex uv = members.Find("uv"); uv != kNoJson) {
        ReadCoordinates(context, uv, data.coordinates);
    }
    data.kind = kMapReaders[static_cast<std::size_t>(type)]({context, members, level});
    context.scene.maps[map] = std::move(data);
    return static_cast<int>(map);
}

}  // namespace

int ReadMap(eDocumentContext& context, eJsonIndex value) {
    return ReadMapAt(context, value, 1);
}

}  // namespace standalone
