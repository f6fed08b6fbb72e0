// The words of the scene document for what the records keep as numbers, and its limits: shared by its reader
// and its writer.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace standalone {

inline constexpr int kSceneDocumentVersion = 1;

// By eLightKind.
inline constexpr std::array<std::string_view, 4> kLightWords = {"omni", "spot", "directional", "ambient"};

// By sub-map index.
inline constexpr std::array<std::string_view, 12> kMapSlotWords = {
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
