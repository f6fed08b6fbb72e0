#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/material.h"
#include "host/mesh.h"
#include "verify/verified_scene.h"
#include "written/exact_space.h"

namespace verify {

// Where a texture map takes its coordinates on one mesh.
class eMapPlace {
public:
    // `map` may be null.
    eMapPlace(const host::Mesh& mesh, const host::Texmap* map, bool isPlaced);

    // u, v, w in the host's direction; 0 without a map.
    eVector At(std::size_t face, std::size_t corner) const;

private:
    const host::Mesh* mesh_;
    bool hasMap_;
    const host::MapChannel* channel_ = nullptr;  // else the object's box counts
    host::Matrix3 placement_;
    eVector boxCorner_{};
    eVector boxSize_{};
};

// What a material id of a mesh means: the engine's material, and where colours and coordinates come from.
struct eFaceSurface {
    host::Mtl* leaf;       // of the scene, may be null
    std::string material;  // the engine's name
    bool hasSecondMap = false;
    eMapPlace first;
    eMapPlace second;
    eMapPlace blendPlace;
    host::Texmap* blend = nullptr;     // of two layers, as alpha
    bool isBlendedByVertices = false;  // by the red of the vertex colours
    float opacity = 1;

    eFaceSurface(const host::Mesh& mesh, host::Mtl* ownLeaf);
    // The amount of the second layer at a corner.
    float BlendAt(std::size_t face, std::size_t corner, host::TimeValue time) const;
};

// A map that gives a material of the engine one of its pictures.
struct eMapUse {
    const char* key;  // of the picture in the material's file
    host::Texmap* map;
    bool isBump = false;
    bool isSpecular = false;
    float amount = 1;
};
std::vector<eMapUse> MapUsesOf(host::Mtl& leaf);

// The surfaces of one mesh by material id; `material` is the node's and may be null.
class eSurfaces {
public:
    eSurfaces(const host::Mesh& mesh, host::Mtl* material) : mesh_(mesh), material_(material) {}
    const eFaceSurface& Of(const host::Face& face);

private:
    const host::Mesh& mesh_;
    host::Mtl* material_;
    std::vector<std::unique_ptr<eFaceSurface>> byId_;
};

}  // namespace verify
