#include "export/mesh_stage_driver.h"

#include "animation/model_motion.h"
#include "mesh/extract_node_mesh.h"
#include "mesh/file/mesh_file.h"
#include "mesh/write_mesh.h"
#include "run/export.h"
#include "scene/current_model.h"

void eMeshStageDriver::ExtractNodeMesh(Export& run, host::INode& node, host::INode* meshTarget,
                                       host::INode* commonTarget) {
    ::ExtractNodeMesh(run, node, meshTarget, commonTarget);
}

bool eMeshStageDriver::WriteMesh(Export& run, eExportResourceSet& set, const eName& name, int boneIndex) {
    AddMeshEntry(set, name);
    const bool isWritten = ::WriteMesh(run, *set.meshBodies, boneIndex);
    if (const auto bone = static_cast<std::size_t>(boneIndex); run.model->bones[bone].vertexCount == 0) {
        run.motion->frames.DropVertices(bone);
    }
    if (!isWritten) {
        set.meshTable.pop_back();
        return false;
    }
    ++run.modelReports[run.model->modelIndex].meshes;
    return true;
}
