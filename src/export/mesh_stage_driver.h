#pragma once

#include "scene/skeleton/mesh_stage.h"

// The mesh stage of a real run: hands the calls of the skeleton walk to the modules behind it.
class eMeshStageDriver : public eMeshStage {
public:
    void ExtractNodeMesh(Export& run, host::INode& node, host::INode* meshTarget,
                         host::INode* commonTarget) override;
    bool WriteMesh(Export& run, eExportResourceSet& set, const eName& name, int boneIndex) override;
};
