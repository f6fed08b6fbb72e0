#pragma once

#include <cstdint>
#include <string>

#include "host/material.h"

// The questions that the mesh stage, the material pass and the texture writer ask of a host material. But for
// its name, a Sorrel material is asked through the material that it wraps. A null material answers 0 and
// false.

// "empty_material" for null; else the host's name, made safe and in lower case.
std::string GetMaterialName(const host::Mtl* material);

// The material inside a Sorrel material, which may be null; any other material itself.
host::Mtl* WithoutSorrel(host::Mtl* material);

// The sub-map of that number, or null.
host::Texmap* SubTexmap(const host::Mtl* material, int index);

// A two-layer material, or a diffuse map of two layers (Mix, RGB Multiply).
bool IsTwoLayer(host::Mtl* material);
// The diffuse map multiplies two layers.
bool IsMultiply(host::Mtl* material);

// The amount of an enabled bump or specular level map of a standard material; else 0.
float GetBumpAmount(host::Mtl* material);
float GetSpecularAmount(host::Mtl* material);

// The textures that the engine's material has: 1 to 4.
int GetSlotCount(host::Mtl* material);

// A R G B at time 0: the shininess and the specular colour of a standard material; else 0.
std::uint32_t GetSpecularColor(host::Mtl* material);

// The leaf below multi materials that a face with the material id shows; null where a slot is empty, and
// where multi materials contain each other.
host::Mtl* LeafMaterial(host::Mtl* material, std::uint32_t materialId);
