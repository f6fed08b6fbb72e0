#include "mesh/build/finite_frames.h"

#include <algorithm>

#include "animation/model_motion.h"
#include "mesh/build/finite_vertex.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/current_model.h"

namespace {

void TellBrokenFrame(Export& run, const eExportBone& bone, int frame) {
    Tell(run, eMessageId::MeshFrameNotFinite, {.node = host::PathOf(*bone.node)}, bone.node->GetName(),
         frame);
}

}  // namespace

void KeepFramesFinite(Export& run, int boneIndex, const std::vector<eExportVertex>& still) {
    const auto slot = static_cast<std::size_t>(boneIndex);
    bool isTold = false;
    run.motion->frames.ForEach([&](int frame, eExportFrame& entries) {
        eExportFrameMesh* mesh = entries.bones[slot].mesh.get();
        if (mesh == nullptr || std::ranges::all_of(mesh->vertices, IsFinite)) {
            return;
        }
        mesh->vertices = still;
        if (!isTold) {
            TellBrokenFrame(run, run.model->bones[slot], frame);
            isTold = true;
        }
    });
}
