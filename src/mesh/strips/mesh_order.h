#pragma once

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

eMeshOrder MeasureOrder(const std::string& name, const eMeshAssembly& assembly, const eSubMeshes& subMeshes);
