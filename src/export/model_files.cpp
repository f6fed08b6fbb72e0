#include "export/model_files.h"

#include <algorithm>

#include "animation/animation_file.h"
#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/mdl_header.h"
#include "io/path.h"
#include "io/streams/file_failure.h"
#include "run/export.h"

namespace {

const eName kNullDevice("nul");

eName AnimationListPath(const Export& run) {
    return run.modelFolder / "anim.txt";
}

eName EntityPath(const Export& run) {
    const eName path = eName(run.basePath).Append(".def");
    return run.options.exportMesh != 0 && !PathExists(path) ? path : kNullDevice;
}

void RemoveAnimationList(const Export& run) {
    const eName path = AnimationListPath(run);
    if (!RemovePath(path)) {
        ShowError(run.host->GetMAXHWnd(),
                  (format("Не удалось удалить файл '%s'."_ansi) % path.Text()).Text());
    }
}

}  // namespace

eModelFiles::~eModelFiles() {
    run.defWriter.reset();
}

void eModelFiles::OpenModelText() {
    run.mdlWriter = std::make_unique<xIo::xSdl::eWriter>();
    run.mdlWriter->OpenFile(run.options.exportMesh != 0 ? eName(run.basePath).Append(".mdl") : kNullDevice);
    WriteMdlHeader(run);
}

void eModelFiles::OpenEntityDefinition() {
    const eName path = EntityPath(run);
    defStream = std::make_unique<xIo::eFileStream>();
    if (!defStream->Open(path, xIo::streamWrite | xIo::streamTruncate) &&
        defStream->Status().reason != platform::eIoReason::Fenced) {
        xIo::TellWriteFailure(path, defStream->Status());
    }
    run.defWriter = std::make_unique<xIo::xSdl::eWriter>();
    run.defWriter->Attach(defStream.get());
    run.defWriter->BlockBegin().Word("entity").EndLine();
}

void eModelFiles::OpenAnimationList() {
    if (run.options.exportAnimation != 0) {
        run.animWriter = std::make_unique<xIo::xSdl::eWriter>();
        run.animWriter->OpenFile(AnimationListPath(run));
    }
}

void eModelFiles::CloseTexts() {
    run.defWriter->BlockEndLine();
    run.defWriter.reset();
    run.mdlWriter.reset();
    defStream.reset();
}

void eModelFiles::WriteAnimations() {
    if (run.options.exportAnimation == 0) {
        return;
    }
    WriteAnimationFiles(run);
    run.animWriter.reset();
    if (run.animations.empty()) {
        RemoveAnimationList(run);
    }
    run.modelReports[run.modelIndex].animations =
        static_cast<int>(std::ranges::count(run.animations, true, &eExportAnimation::inRange));
}
