#pragma once

#include <set>
#include <string>

#include "verify/finding.h"
#include "verify/verify_mesh.h"
#include "verify/written_materials.h"
#include "written/written_model.h"

namespace verify {

// Follows every name that a file of a model gives for something in another file: views to meshes, parts of
// meshes to materials, materials to pictures. Kinds: "view", "material reference", "picture reference",
// "broken materials".
class eReferences {
public:
    eReferences(eWrittenMeshes& meshes, eWrittenMaterials& materials)
        : meshes_(meshes), materials_(materials) {}

    void FollowViews(const eName& folder, const eWrittenModel& model, eFindings& findings);
    // `folder` is that of the model that has the mesh. Pictures of a file of materials are followed once.
    void FollowMaterials(const eName& folder, const eFileMesh& mesh, eFindings& findings);

private:
    void FollowPictures(const eName& folder, eFindings& findings);

    eWrittenMeshes& meshes_;
    eWrittenMaterials& materials_;
    std::set<eName> followed_;
};

}  // namespace verify
