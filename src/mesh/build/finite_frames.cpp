#include "mesh/build/finite_frames.h"

#include <algorithm>

#include "animation/model_motion.h"
#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "mesh/build/finite_vertex.h"
#include "run/export.h"
#include "scene/current_model.h"

namespace {

void TellBrokenFrame(Export& run, const eExportBone& bone, int frame) {
    const auto text = format(
                          "Мэш '%s' в кадре %d содержит координаты, которые не являются числами. Для таких "
                          "кадров записана неподвижная форма.\nНеобходимо исправить анимацию масштаба узла "
                          "или его вершин."_ansi) %
                      bone.node->GetName() % frame;
    ShowWarning(run.host->GetMAXHWnd(), text.Text());
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
