#include "verify/references.h"

namespace verify {

void eReferences::FollowViews(const eName& folder, const eWrittenModel& model, eFindings& findings) {
    for (const eWrittenBone& bone : model.bones) {
        for (const std::string& view : bone.views) {
            const auto [place, name] = Resolve(folder, view);
            if (!meshes_.Has(place, name)) {
                findings.Add("view", 0, bone.name + " shows " + view);
            }
        }
    }
}

void eReferences::FollowMaterials(const eName& folder, const eFileMesh& mesh, eFindings& findings) {
    for (const eFileSubMesh& subMesh : mesh.subMeshes) {
        const auto [place, name] = Resolve(folder, subMesh.material);
        if (!materials_.In(place).materials.contains(name)) {
            findings.Add("material reference", 0, mesh.name + " has " + subMesh.material);
        }
        if (followed_.insert(place).second) {
            FollowPictures(place, findings);
        }
    }
}

void eReferences::FollowPictures(const eName& folder, eFindings& findings) {
    const eWrittenMaterials::eFile& file = materials_.In(folder);
    if (file.isBroken) {
        findings.Add("broken materials", 0, folder.Part(eName::FileName));
    }
    for (const auto& [name, material] : file.materials) {
        for (const auto& [key, picture] : material) {
            if (materials_.PictureFile(folder, picture).IsEmpty()) {
                findings.Add("picture reference", 0, name + " has " + picture);
            }
        }
    }
}

}  // namespace verify
