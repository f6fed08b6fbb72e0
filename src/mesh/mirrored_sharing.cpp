#include "mesh/mirrored_sharing.h"

#include <string>

#include "base/ansi.h"
#include "export/export.h"

namespace {

bool Shows(const host::INode& node, const host::INode& owner) {
    std::string mesh;
    return node.GetUserPropString("Mesh", mesh) && EqualNoCase(mesh, owner.GetName());
}

bool IsMirroredBelow(const host::INode& node, const host::INode& owner, host::TimeValue t) {
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        const host::INode& child = *node.GetChildNode(i);
        const bool isMirrored = Shows(child, owner)
                                    ? (child.GetNodeTM(t) * Inverse(owner.GetNodeTM(t))).Parity() != 0
                                    : IsMirroredBelow(child, owner, t);
        if (isMirrored) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool IsSharedMirrored(const Export& run, host::INode& owner) {
    return IsMirroredBelow(*run.host->GetRootNode(), owner, run.StaticTime());
}
