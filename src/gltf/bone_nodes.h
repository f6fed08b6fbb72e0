#pragma once

#include <vector>

#include "gltf/glb.h"
#include "gltf/model_files.h"
#include "gltf/space.h"

namespace gltf {

// The bones of a model as the first nodes of the file, by the same numbers.
class eBoneNodes {
public:
    // Adds them as they stand at rest. A bone whose axes don't stand at right angles keeps its matrix unless
    // a clip moves it: then the shear is lost, and warned of.
    eBoneNodes(eGlb& glb, eModelFiles& files);

    int NumberOf(const std::string& bone) const { return files_.model.NumberOf(bone); }
    // At rest, in the space of the file.
    const host::DMatrix3& Rest(int bone) const { return rest_[static_cast<std::size_t>(bone)]; }
    // Of a matrix against the bone above, as the node has it.
    ePlacement Placement(int bone, const host::DMatrix3& local) const;
    void AddChild(int bone, int node) { glb_.At("nodes", bone)["children"].push_back(node); }
    // True if the text hides what the bone shows.
    bool IsHidden(int bone) const;

private:
    eJson Describe(const written::eWrittenBone& bone) const;
    bool IsMoved(const std::string& bone) const;

    eGlb& glb_;
    eModelFiles& files_;
    std::vector<host::DMatrix3> rest_;
};

// Writes the placement into a node, as far as it is not the identity.
void PutPlacement(const ePlacement& placement, eJson& node);
void PutMatrix(const host::DMatrix3& matrix, eJson& node);

}  // namespace gltf
