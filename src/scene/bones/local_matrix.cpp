#include "scene/bones/local_matrix.h"

#include "scene/bones/bone_tree.h"

host::Matrix3 MatrixInParentBone(const host::INode& node, host::TimeValue t) {
    const host::INode* parent = ParentBone(node);
    const host::Matrix3 matrix = host::NoScale(node.GetNodeTM(t));
    return parent != nullptr ? matrix * host::Inverse(host::NoScale(parent->GetNodeTM(t))) : matrix;
}
