// The words of the scene document for what the records keep as numbers, and its limits: shared by its reader
// and its writer.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <variant>

#include "standalone/scene_data.h"

namespace standalone {

inline constexpr int kSceneDocumentVersion = 1;

// The types of objects, modifiers, materials and maps, each by the place of its record in the variant.
inline constexpr std::array<std::string_view, 12> kObjectWords = {"helper",   "target", "box",       "sphere",
                                                                  "cylinder", "mesh",   "rectangle", "circle",
                                                                  "line",     "camera", "light",     "other"};
inline constexpr std::array<std::string_view, 2> kModifierWords = {"skin", "other"};
inline constexpr std::array<std::string_view, 5> kMaterialWords = {"standard", "multi", "twoLayer", "sorrel",
                                                                   "other"};
inline constexpr std::array<std::string_view, 7> kMapWords = {
    "bitmap", "normalBump", "mix", "rgbMultiply", "vertexColor", "checker", "other"};
static_assert(kObjectWords.size() == std::variant_size_v<eObjectKind>);
static_assert(kModifierWords.size() == std::variant_size_v<eModifierKind>);
static_assert(kMaterialWords.size() == std::variant_size_v<eMaterialKind>);
static_assert(kMapWords.size() == std::variant_size_v<eMapKind>);

// By eLightKind.
inline constexpr std::array<std::string_view, 4> kLightWords = {"omni", "spot", "directional", "ambient"};

// By sub-map index.
inline constexpr std::array<std::string_view, kMapSlots> kMapSlotWords = {
    "ambient", "diffuse", "specular", "specularLevel", "glossiness", "selfIllumination",
    "opacity", "filter",  "bump",     "reflection",    "refraction", "displacement"};

// Deeper trees are refused, because whoever walks them does so by recursion.
inline constexpr std::size_t kMaxNodeLevels = 2000;
inline constexpr int kMaxMapLevels = 50;
inline constexpr int kMaxMaterialLevels = 50;

// A document names a primitive's fineness in a few digits; the memory for it is spent on evaluation.
inline constexpr int kMaxSphereSegments = 1024;
inline constexpr int kMaxCylinderSides = 4096;

// Map channels of the host; -2 is the vertex alpha, 0 the vertex colour.
inline constexpr int kFirstMapChannel = -2;
inline constexpr int kLastMapChannel = 99;

inline constexpr int kJointFlagBits = 32;

}  // namespace standalone
