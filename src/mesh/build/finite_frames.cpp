#include "mesh/build/finite_frames.h"

#include <algorithm>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"
#include "mesh/build/finite_vertex.h"

namespace {

void TellBrokenFrame(Export& run, const eExportBone& bone, std::size_t frame) {
    const auto text = format(
                          "Мэш '%s' в кадре %d содержит координаты, которые не являются числами. Для таких "
                          "кадров записана неподвижная форма.\nНеобходимо исправить анимацию масштаба узла "
                          "или его вершин."_ansi) %
                      bone.node->GetName() % static_cast<int>(frame);
    ShowWarning(run.host->GetMAXHWnd(), text.Text());
}

}  // namespace

void KeepFramesFinite(Export& run, int boneIndex, const std::vector<eExportVertex>& still) {
    const auto slot = static_cast<std::size_t>(boneIndex);
    bool isTold = false;
    for (std::size_t frame = 0; frame < run.frames.size(); ++frame) {
        eExportFrameMesh* mesh =
            run.frames[frame].IsAnimated() ? run.frames[frame].bones[slot].mesh.get() : nullptr;
        if (mesh == nullptr || std::ranges::all_of(mesh->vertices, IsFinite)) {
            continue;
        }
        mesh->vertices = still;
        if (!isTold) {
            TellBrokenFrame(run, run.bones[slot], frame);
            isTold = true;
        }
    }
}
