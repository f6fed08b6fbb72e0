#include "answers/lint_size.h"

#include <algorithm>

#include "base/number_text.h"
#include "host/node_path.h"
#include "run/export.h"
#include "scene/master_scale.h"
#include "scene/triangle_mesh.h"

namespace answers {
namespace {

constexpr float kLeastMetres = 0.01F;
constexpr float kMostMetres = 2000;

// In world space, scene units; hidden nodes are not exported.
void AddBounds(Export& run, host::INode& node, host::Box3& bounds) {
    if (node.IsNodeHidden()) {
        return;
    }
    if (const eTriangleMesh triangles(node, run.StaticTime()); triangles.IsValid()) {
        const host::Matrix3 toWorld = node.GetObjTMAfterWSM(run.StaticTime());
        for (const host::Point3& vertex : triangles.Mesh().verts) {
            bounds += vertex * toWorld;
        }
    }
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        AddBounds(run, *node.GetChildNode(i), bounds);
    }
}

}  // namespace

void LintModelSize(Export& run, host::INode& node, std::vector<eMessage>& advice) {
    std::string path;
    if (!node.GetUserPropString("Model", path) && !node.GetUserPropString("XModel", path)) {
        return;
    }
    host::Box3 bounds;
    AddBounds(run, node, bounds);
    if (bounds.IsEmpty()) {
        return;
    }
    const host::Point3 size = (bounds.pmax - bounds.pmin) * MasterScale(run);
    const float largest = std::max({size.x, size.y, size.z});
    if (largest > 0 && (largest < kLeastMetres || largest > kMostMetres)) {
        advice.push_back(MakeMessage(eMessageId::LintModelSize, {.node = host::PathOf(node)}, node.GetName(),
                                     RealText(largest)));
    }
}

}  // namespace answers
