#pragma once

#include <functional>
#include <string>

#include "mesh/strips/cache_statistics.h"

struct eMeshAssembly;
struct eSubMeshes;

// What the order for the vertex cache has done for a mesh: sums over its sub-meshes, for a cache of
// kTargetCacheSize.
struct eMeshOrder {
    std::string mesh;         // name of the mesh in the file
    eCacheStatistics before;  // the triangles in the order of the scene's faces
    eCacheStatistics after;
};

// Told of each mesh that is written. Whoever sets it pays for two simulations of the cache a mesh.
using eMeshOrderObserver = std::function<void(const eMeshOrder&)>;

eMeshOrder MeasureOrder(const std::string& name, const eMeshAssembly& assembly, const eSubMeshes& subMeshes);
