#include "standalone/loaders/gltf/file/gltf_schema.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace standalone {
namespace {

enum class eForm {
    Text,
    Word,  // one of `words`
    Boolean,
    Number,
    Size,     // a whole number from `least` up
    Code,     // one of `codes`
    Numbers,  // just `least` of them, or any count with 0
    Index,    // of an entry in the list `table`
    Indices,
    IndexMap,   // an object whose members are such indices
    IndexMaps,  // a list of those
    SizeMap,    // an object whose members are whole numbers
    Object,     // with `members`
    Objects,    // a list of those, at least `least`
};

struct eMember {
    std::string_view key;
    eForm form;
    bool isRequired = false;
    std::size_t least = 0;
    std::string_view table{};
    std::span<const std::string_view> words{};
    std::span<const int> codes{};
    std::span<const eMember> members{};
};

constexpr bool kRequired = true;
constexpr bool kOptional = false;

constexpr eMember Text(std::string_view key, bool isRequired = kOptional) {
    return {key, eForm::Text, isRequired};
}
constexpr eMember Word(std::string_view key, bool isRequired, std::span<const std::string_view> words) {
    return {.key = key, .form = eForm::Word, .isRequired = isRequired, .words = words};
}
constexpr eMember Number(std::string_view key, bool isRequired = kOptional) {
    return {key, eForm::Number, isRequired};
}
constexpr eMember Size(std::string_view key, bool isRequired = kOptional, std::size_t least = 0) {
    return {key, eForm::Size, isRequired, least};
}
constexpr eMember Code(std::string_view key, bool isRequired, std::span<const int> codes) {
    return {.key = key, .form = eForm::Code, .isRequired = isRequired, .codes = codes};
}
constexpr eMember Numbers(std::string_view key, std::size_t count) {
    return {key, eForm::Numbers, kOptional, count};
}
constexpr eMember Index(std::string_view key, std::string_view table, bool isRequired = kOptional) {
    return {.key = key, .form = eForm::Index, .isRequired = isRequired, .table = table};
}
constexpr eMember Indices(std::string_view key, std::string_view table, bool isRequired = kOptional) {
    return {.key = key, .form = eForm::Indices, .isRequired = isRequired, .table = table};
}
constexpr eMember Object(std::string_view key, std::span<const eMember> members,
                         bool isRequired = kOptional) {
    return {.key = key, .form = eForm::Object, .isRequired = isRequired, .members = members};
}
constexpr eMember Objects(std::string_view key, std::span<const eMember> members, bool isRequired = kOptional,
                          std::size_t least = 0) {
    return {.key = key, .form = eForm::Objects, .isRequired = isRequired, .least = least, .members = members};
}

// --- The form, as the format describes it, each object behind those that stand in it.

constexpr std::array kComponentTypes = {5120, 5121, 5122, 5123, 5125, 5126};
constexpr std::array kIndexTypes = {5121, 5123, 5125};
constexpr std::array kModes = {0, 1, 2, 3, 4, 5, 6};
constexpr std::array<std::string_view, 7> kAccessorTypes = {"SCALAR", "VEC2", "VEC3", "VEC4",
                                                            "MAT2",   "MAT3", "MAT4"};
constexpr std::array<std::string_view, 3> kInterpolations = {"LINEAR", "STEP", "CUBICSPLINE"};
constexpr std::array<std::string_view, 3> kAlphaModes = {"OPAQUE", "MASK", "BLEND"};
constexpr std::array<std::string_view, 2> kCameraTypes = {"perspective", "orthographic"};
constexpr std::array<std::string_view, 3> kLightTypes = {"directional", "point", "spot"};
constexpr std::string_view kLights = "KHR_lights_punctual";
constexpr std::string_view kTextureTransform = "KHR_texture_transform";
constexpr std::string_view kVariants = "KHR_materials_variants";
constexpr std::string_view kMeshopt = "EXT_meshopt_compression";
constexpr std::array<std::string_view, 3> kPackModes = {"ATTRIBUTES", "TRIANGLES", "INDICES"};
constexpr std::array<std::string_view, 4> kPackFilters = {"NONE", "OCTAHEDRAL", "QUATERNION", "EXPONENTIAL"};

constexpr std::array kAsset = {Text("version", kRequired), Text("minVersion")};

constexpr std::array kScene = {Text("name"), Indices("nodes", "nodes")};

constexpr std::array kInstancing = {
    eMember{.key = "attributes", .form = eForm::IndexMap, .isRequired = kRequired, .table = "accessors"}};
constexpr std::array kNodeVisibility = {eMember{"visible", eForm::Boolean}};
constexpr std::array kLightReference = {Index("light", "lights", kRequired)};
constexpr std::array kNodeExtensions = {Object(kLights, kLightReference),
                                        Object("EXT_mesh_gpu_instancing", kInstancing),
                                        Object("KHR_node_visibility", kNodeVisibility)};
constexpr std::array kNode = {Text("name"),
                              Index("mesh", "meshes"),
                              Index("skin", "skins"),
                              Index("camera", "cameras"),
                              Indices("children", "nodes"),
                              Numbers("matrix", 16),
                              Numbers("translation", 3),
                              Numbers("rotation", 4),
                              Numbers("scale", 3),
                              Numbers("weights", 0),
                              Object("extensions", kNodeExtensions)};

constexpr std::array kDraco = {Index("bufferView", "bufferViews", kRequired),
                               eMember{"attributes", eForm::SizeMap, kRequired}};
constexpr std::array kVariantMapping = {Index("material", "materials", kRequired),
                                        Indices("variants", "variants", kRequired)};
constexpr std::array kVariantMappings = {Objects("mappings", kVariantMapping, kRequired)};
constexpr std::array kPrimitiveExtensions = {Object("KHR_draco_mesh_compression", kDraco),
                                             Object(kVariants, kVariantMappings)};
constexpr std::array kPrimitive = {
    eMember{.key = "attributes", .form = eForm::IndexMap, .isRequired = kRequired, .table = "accessors"},
    Index("indices", "accessors"),
    Index("material", "materials"),
    Code("mode", kOptional, kModes),
    eMember{.key = "targets", .form = eForm::IndexMaps, .table = "accessors"},
    Object("extensions", kPrimitiveExtensions)};
constexpr std::array kMesh = {Text("name"), Objects("primitives", kPrimitive, kRequired, 1),
                              Numbers("weights", 0)};

constexpr std::array kSkin = {Text("name"), Indices("joints", "nodes", kRequired),
                              Index("inverseBindMatrices", "accessors"), Index("skeleton", "nodes")};

constexpr std::array kStandIn = {eMember{"fallback", eForm::Boolean}};
constexpr std::array kBufferExtensions = {Object(kMeshopt, kStandIn)};
constexpr std::array kBuffer = {Text("uri"), Size("byteLength", kRequired, 1),
                                Object("extensions", kBufferExtensions)};
constexpr std::array kPackedView = {
    Index("buffer", "buffers", kRequired),  Size("byteOffset"),          Size("byteLength", kRequired, 1),
    Size("byteStride", kRequired, 1),       Size("count", kRequired, 1), Word("mode", kRequired, kPackModes),
    Word("filter", kOptional, kPackFilters)};
constexpr std::array kViewExtensions = {Object(kMeshopt, kPackedView)};
constexpr std::array kBufferView = {Index("buffer", "buffers", kRequired), Size("byteOffset"),
                                    Size("byteLength", kRequired, 1), Size("byteStride"),
                                    Object("extensions", kViewExtensions)};
constexpr std::array kSparseIndices = {Index("bufferView", "bufferViews", kRequired), Size("byteOffset"),
                                       Code("componentType", kRequired, kIndexTypes)};
constexpr std::array kSparseValues = {Index("bufferView", "bufferViews", kRequired), Size("byteOffset")};
constexpr std::array kSparse = {Size("count", kRequired, 1), Object("indices", kSparseIndices, kRequired),
                                Object("values", kSparseValues, kRequired)};
constexpr std::array kAccessor = {Index("bufferView", "bufferViews"),
                                  Size("byteOffset"),
                                  Code("componentType", kRequired, kComponentTypes),
                                  eMember{"normalized", eForm::Boolean},
                                  Size("count", kRequired, 1),
                                  Word("type", kRequired, kAccessorTypes),
                                  Object("sparse", kSparse)};

constexpr std::array kTransform = {Numbers("offset", 2), Number("rotation"), Numbers("scale", 2),
                                   Size("texCoord")};
constexpr std::array kTextureExtensions = {Object(kTextureTransform, kTransform)};
constexpr std::array kTextureInfo = {Index("index", "textures", kRequired), Size("texCoord"), Number("scale"),
                                     Object("extensions", kTextureExtensions)};
constexpr std::array kMetallicRoughness = {Numbers("baseColorFactor", 4),
                                           Object("baseColorTexture", kTextureInfo),
                                           Object("metallicRoughnessTexture", kTextureInfo)};
constexpr std::array kMaterial = {Text("name"),
                                  Object("pbrMetallicRoughness", kMetallicRoughness),
                                  Object("normalTexture", kTextureInfo),
                                  Object("occlusionTexture", kTextureInfo),
                                  Object("emissiveTexture", kTextureInfo),
                                  Numbers("emissiveFactor", 3),
                                  Word("alphaMode", kOptional, kAlphaModes),
                                  eMember{"doubleSided", eForm::Boolean}};
constexpr std::array kTexture = {Index("source", "images"), Index("sampler", "samplers")};
constexpr std::array kTextureSampler = {Size("wrapS"), Size("wrapT")};
constexpr std::array kImage = {Text("name"), Text("uri"), Text("mimeType"),
                               Index("bufferView", "bufferViews")};

constexpr std::array kPerspective = {Number("yfov", kRequired), Number("znear", kRequired),
                                     Number("aspectRatio")};
constexpr std::array kOrthographic = {Number("xmag", kRequired), Number("ymag", kRequired),
                                      Number("zfar", kRequired), Number("znear", kRequired)};
constexpr std::array kCamera = {Text("name"), Word("type", kRequired, kCameraTypes),
                                Object("perspective", kPerspective), Object("orthographic", kOrthographic)};

constexpr std::array kPointer = {Text("pointer", kRequired)};
constexpr std::array kTargetExtensions = {Object("KHR_animation_pointer", kPointer)};
constexpr std::array kTarget = {Index("node", "nodes"), Text("path", kRequired),
                                Object("extensions", kTargetExtensions)};
constexpr std::array kChannel = {Size("sampler", kRequired), Object("target", kTarget, kRequired)};
constexpr std::array kSampler = {Index("input", "accessors", kRequired),
                                 Index("output", "accessors", kRequired),
                                 Word("interpolation", kOptional, kInterpolations)};
constexpr std::array kAnimation = {Text("name"), Objects("channels", kChannel, kRequired),
                                   Objects("samplers", kSampler, kRequired)};

constexpr std::array kSpot = {Number("innerConeAngle"), Number("outerConeAngle")};
constexpr std::array kLight = {Text("name"),        Word("type", kRequired, kLightTypes),
                               Numbers("color", 3), Number("intensity"),
                               Number("range"),     Object("spot", kSpot)};
constexpr std::array kLightList = {Objects("lights", kLight, kRequired)};
constexpr std::array kVariant = {Text("name")};
constexpr std::array kVariantList = {Objects("variants", kVariant, kRequired)};
constexpr std::array kExtensions = {Object(kLights, kLightList), Object(kVariants, kVariantList)};

constexpr std::array kDocument = {Object("asset", kAsset, kRequired), Index("scene", "scenes"),
                                  Objects("scenes", kScene),          Objects("nodes", kNode),
                                  Objects("meshes", kMesh),           Objects("skins", kSkin),
                                  Objects("buffers", kBuffer),        Objects("bufferViews", kBufferView),
                                  Objects("accessors", kAccessor),    Objects("materials", kMaterial),
                                  Objects("textures", kTexture),      Objects("samplers", kTextureSampler),
                                  Objects("images", kImage),          Objects("cameras", kCamera),
                                  Objects("animations", kAnimation),  Object("extensions", kExtensions)};

// --- The check.

class eFormCheck {
public:
    eFormCheck(const eJsonTree& document, eImportReport& ownReport) : json(document), report(ownReport) {}

    void Check(eJsonIndex object, std::span<const eMember> members) {
        if (!Expect(object, eJsonKind::Object)) {
            return;
        }
        for (const eMember& member : members) {
            const eJsonIndex value = json.FindMember(object, member.key);
            if (value != kNoJson) {
                CheckValue(value, member);
            } else if (member.isRequired) {
                Refuse(object, eMessageId::GltfMissingMember, member.key);
            }
        }
    }

private:
    template <class... Values>
    void Refuse(eJsonIndex value, eMessageId id, const Values&... values) {
        report.Problem(json.PathOf(value), id, values...);
    }

    static ePhrase NameOf(eJsonKind kind) {
        switch (kind) {
            case eJsonKind::Object:
                return ePhrase::JsonObject;
            case eJsonKind::Array:
                return ePhrase::JsonList;
            case eJsonKind::Text:
                return ePhrase::JsonText;
            default:
                return ePhrase::JsonTruth;
        }
    }

    bool Expect(eJsonIndex value, eJsonKind kind) {
        if (json.Is(value, kind)) {
            return true;
        }
        if (kind == eJsonKind::Integer) {
            Refuse(value, eMessageId::GltfWholeNumber);
        } else {
            Refuse(value, eMessageId::GltfExpected, Utf8Words(NameOf(kind)));
        }
        return false;
    }

    void CheckValue(eJsonIndex value, const eMember& member) {
        switch (member.form) {
            case eForm::Text:
                Expect(value, eJsonKind::Text);
                return;
            case eForm::Word:
                CheckWord(value, member.words);
                return;
            case eForm::Boolean:
                Expect(value, eJsonKind::Boolean);
                return;
            case eForm::Number:
                CheckNumber(value);
                return;
            case eForm::Size:
                CheckWhole(value, static_cast<std::int64_t>(member.least),
                           std::numeric_limits<std::int64_t>::max());
                return;
            case eForm::Code:
                CheckCode(value, member.codes);
                return;
            case eForm::Index:
                CheckIndex(value, member.table);
                return;
            case eForm::Object:
                Check(value, member.members);
                return;
            case eForm::IndexMap:
                CheckIndexMap(value, member.table);
                return;
            case eForm::SizeMap:
                CheckSizeMap(value);
                return;
            default:
                CheckList(value, member);
        }
    }

    void CheckList(eJsonIndex list, const eMember& member) {
        if (!Expect(list, eJsonKind::Array)) {
            return;
        }
        const std::size_t count = json.Count(list);
        const bool isTooShort = member.form == eForm::Objects && count < member.least;
        const bool isWrongCount = member.form == eForm::Numbers && member.least != 0 && count != member.least;
        if (isTooShort || isWrongCount) {
            Refuse(list, eMessageId::GltfLength, member.least, count);
        }
        for (const eJsonIndex element : json.Children(list)) {
            if (member.form == eForm::Numbers) {
                CheckNumber(element);
            } else if (member.form == eForm::Indices) {
                CheckIndex(element, member.table);
            } else if (member.form == eForm::IndexMaps) {
                CheckIndexMap(element, member.table);
            } else {
                Check(element, member.members);
            }
        }
    }

    void CheckWord(eJsonIndex value, std::span<const std::string_view> words) {
        if (!Expect(value, eJsonKind::Text)) {
            return;
        }
        std::string known;
        for (const std::string_view word : words) {
            if (json.Text(value) == word) {
                return;
            }
            known += (known.empty() ? "" : ", ") + std::string(word);
        }
        Refuse(value, eMessageId::GltfUnknownWord, known);
    }

    void CheckNumber(eJsonIndex value) {
        if (!json.IsNumber(value)) {
            Refuse(value, eMessageId::GltfExpected, Utf8Words(ePhrase::JsonNumber));
        } else if (!json.Float(value)) {
            Refuse(value, eMessageId::GltfNumberTooLarge);
        }
    }

    // The number where it is a good one.
    std::optional<std::int64_t> CheckWhole(eJsonIndex value, std::int64_t least, std::int64_t most) {
        if (!Expect(value, eJsonKind::Integer)) {
            return std::nullopt;
        }
        const std::int64_t number = json.values[value].integer;
        if (number < least || number > most) {
            Refuse(value, eMessageId::GltfNumberRange, number);
            return std::nullopt;
        }
        return number;
    }

    void CheckCode(eJsonIndex value, std::span<const int> codes) {
        const std::optional<std::int64_t> number = CheckWhole(value, 0, std::numeric_limits<int>::max());
        for (const int code : codes) {
            if (!number || *number == code) {
                return;
            }
        }
        Refuse(value, eMessageId::GltfNumberMeaning, *number);
    }

    void CheckIndex(eJsonIndex value, std::string_view table) {
        if (!Expect(value, eJsonKind::Integer)) {
            return;
        }
        const std::int64_t number = json.values[value].integer;
        const std::size_t count = CountOf(table);
        if (number < 0 || static_cast<std::uint64_t>(number) >= count) {
            Refuse(value, eMessageId::GltfNoEntry, number, count, table);
        }
    }

    void CheckIndexMap(eJsonIndex value, std::string_view table) {
        if (!Expect(value, eJsonKind::Object)) {
            return;
        }
        for (const eJsonIndex member : json.Children(value)) {
            CheckIndex(member, table);
        }
    }

    void CheckSizeMap(eJsonIndex value) {
        if (!Expect(value, eJsonKind::Object)) {
            return;
        }
        for (const eJsonIndex member : json.Children(value)) {
            CheckWhole(member, 0, std::numeric_limits<std::int32_t>::max());
        }
    }

    std::size_t CountOf(std::string_view table) {
        for (const eTableSize& known : tableSizes) {
            if (known.table == table) {
                return known.count;
            }
        }
        const eJsonIndex owner = table == "lights"     ? RootExtension(kLights)
                                 : table == "variants" ? RootExtension(kVariants)
                                                       : kJsonRoot;
        const eJsonIndex list = owner == kNoJson ? kNoJson : json.FindMember(owner, table);
        const bool isList = list != kNoJson && json.Is(list, eJsonKind::Array);
        tableSizes.push_back({table, isList ? json.Count(list) : 0});
        return tableSizes.back().count;
    }

    eJsonIndex RootExtension(std::string_view name) const {
        const eJsonIndex extensions = json.FindMember(kJsonRoot, "extensions");
        const bool isObject = extensions != kNoJson && json.Is(extensions, eJsonKind::Object);
        return isObject ? json.FindMember(extensions, name) : kNoJson;
    }

    struct eTableSize {
        std::string_view table;
        std::size_t count = 0;
    };

    const eJsonTree& json;
    eImportReport& report;
    std::vector<eTableSize> tableSizes;
};

}  // namespace

void CheckGltfForm(const eJsonTree& json, eImportReport& report) {
    for (const eJsonIndex member : json.repeatedMembers) {
        report.Problem(json.PathOf(member), eMessageId::GltfRepeatedMember);
    }
    eFormCheck(json, report).Check(kJsonRoot, kDocument);
}

}  // namespace standalone
