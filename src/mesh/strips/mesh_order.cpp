#include "mesh/strips/mesh_order.h"

#include "mesh/strips/sub_mesh.h"

eMeshOrder MeasureOrder(const std::string& name, const eMeshAssembly& assembly, const eSubMeshes& subMeshes) {
    eMeshOrder order{name, {}, {}};
    for (const std::vector<eTriangle>& subset : assembly.subsets) {
        if (!subset.empty()) {
            order.before += SimulateVertexCache({subset.front().data(), 3 * subset.size()}, kTargetCacheSize);
        }
    }
    for (const ePrimitiveGroup& group : subMeshes.groups) {
        order.after += SimulateVertexCache({group.indices.get(), group.numIndices}, kTargetCacheSize);
    }
    return order;
}
