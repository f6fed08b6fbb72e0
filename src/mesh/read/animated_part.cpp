#include "mesh/read/animated_part.h"

#include <cstdint>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"
#include "mesh/read/extract_mesh.h"

eAnimatedPart::eAnimatedPart(Export& ownRun, host::INode& ownNode, host::INode& ownTarget,
                             eExportBone& ownBone, const eFrameExtent& ownBegin, const eFrameExtent& ownEnd)
    : run(ownRun), node(ownNode), commonTarget(ownTarget), bone(ownBone), begin(ownBegin), end(ownEnd) {}

void eAnimatedPart::ReadFrames(const eExportAnimation& animation) {
    const int skipped = animation.firstFrame == 0 ? 1 : 0;
    const std::int64_t first = std::int64_t{animation.firstFrame} + skipped;
    const std::int64_t last = animation.lastFrame;
    const std::int64_t frames = static_cast<std::int64_t>(bone.mesh.frames.size());
    if (first <= last && (first < 0 || last >= frames)) {
        TellMissingFrames(animation);
    }
    for (std::int64_t frame = std::max<std::int64_t>(first, 0); frame <= std::min(last, frames - 1);
         ++frame) {
        // Backwards, the frames are filled from the same start on with the times from the end on.
        const std::int64_t timeFrame = run.options.reverseAnimation ? last - (frame - first) : frame;
        ReadFrame(static_cast<int>(frame),
                  static_cast<host::TimeValue>(timeFrame * run.host->GetTicksPerFrame()));
    }
}

void eAnimatedPart::ReadFrame(int meshFrame, host::TimeValue time) {
    eExportMeshFrame& frame = bone.mesh.frames[static_cast<std::size_t>(meshFrame)];
    if (frame.positions.size() > begin.vertices) {
        return;
    }
    FillFromFirstFrame(bone.mesh, frame, begin);
    run.meshFrame = meshFrame;
    ExtractMesh(run, node, time, &commonTarget);
    run.meshFrame = 0;
    if (ExtentOf(frame) != end) {
        TellOtherShape(meshFrame);
        CutFrame(frame, begin);
        FillFromFirstFrame(bone.mesh, frame, end);
    }
}

void eAnimatedPart::TellMissingFrames(const eExportAnimation& animation) {
    if (toldMissingFrames) {
        return;
    }
    toldMissingFrames = true;
    if (bone.mesh.frames.size() == 1) {
        Warn((format("Мэш '%s' анимирован по кадрам, а общий мэш '%s', в который он входит, нет. Движение не "
                     "записано.\nНеобходимо указать у общего мэша 'CommonMesh' без имени."_ansi) %
              node.GetName() % commonTarget.GetName())
                 .Text());
    } else {
        Warn((format("Кадры анимации '%s' до нулевого не записаны в мэш '%s'.\nНеобходимо перенести анимацию "
                     "в кадры от 0 и дальше."_ansi) %
              animation.name % node.GetName())
                 .Text());
    }
}

void eAnimatedPart::TellOtherShape(int meshFrame) {
    if (toldOtherShape) {
        return;
    }
    toldOtherShape = true;
    Warn((format("Мэш '%s' в кадре %d состоит из других граней, чем в статическом кадре. Для таких кадров "
                 "записана неподвижная форма.\nНеобходимо убрать анимацию, которая меняет число граней или "
                 "вершин."_ansi) %
          node.GetName() % meshFrame)
             .Text());
}

void eAnimatedPart::Warn(const std::string& text) const {
    ShowWarning(run.host->GetMAXHWnd(), text);
}
