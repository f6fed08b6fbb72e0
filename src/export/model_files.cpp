#include "export/model_files.h"

#include <algorithm>

#include "animation/animation_file.h"
#include "animation/model_motion.h"
#include "export/mdl_header.h"
#include "io/path.h"
#include "io/streams/file_failure.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/current_model.h"
#include "scene/run_journal.h"

namespace {

const eName kNullDevice("nul");

eName AnimationListPath(const Export& run) {
    return run.model->modelFolder / "anim.txt";
}

eName EntityPath(Export& run) {
    const eName path = eName(run.model->basePath).Append(".def");
    const bool isThere = PathExists(path);
    if (run.options.exportMesh != 0) {
        NoteFile(run, path, isThere ? eFileRule::IsThere : eFileRule::FirstRunOnly);
    }
    return run.options.exportMesh != 0 && !isThere ? path : kNullDevice;
}

eName ModelTextPath(Export& run) {
    const eName path = eName(run.model->basePath).Append(".mdl");
    if (run.options.exportMesh != 0) {
        NoteFile(run, path, eFileRule::EveryRun);
    }
    return run.options.exportMesh != 0 ? path : kNullDevice;
}

void RemoveAnimationList(Export& run) {
    const eName path = AnimationListPath(run);
    if (!RemovePath(path)) {
        Tell(run, eMessageId::FilesNotDeleted, {.file = path.Text()}, path.Text());
    }
}

}  // namespace

eModelFiles::~eModelFiles() {
    run.texts->defWriter.reset();
}

void eModelFiles::OpenModelText() {
    run.texts->mdlWriter = std::make_unique<xIo::xSdl::eWriter>();
    run.texts->mdlWriter->OpenFile(ModelTextPath(run));
    WriteMdlHeader(run);
}

void eModelFiles::OpenEntityDefinition() {
    const eName path = EntityPath(run);
    defStream = std::make_unique<xIo::eFileStream>();
    if (!defStream->Open(path, xIo::streamWrite | xIo::streamTruncate) &&
        defStream->Status().reason != platform::eIoReason::Fenced) {
        xIo::TellWriteFailure(path, defStream->Status());
    }
    run.texts->defWriter = std::make_unique<xIo::xSdl::eWriter>();
    run.texts->defWriter->Attach(defStream.get());
    run.texts->defWriter->BlockBegin().Word("entity").EndLine();
}

void eModelFiles::OpenAnimationList() {
    if (run.options.exportAnimation != 0) {
        run.texts->animWriter = std::make_unique<xIo::xSdl::eWriter>();
        run.texts->animWriter->OpenFile(AnimationListPath(run));
    }
}

void eModelFiles::CloseTexts() {
    run.texts->defWriter->BlockEndLine();
    run.texts->defWriter.reset();
    run.texts->mdlWriter.reset();
    defStream.reset();
}

void eModelFiles::WriteAnimations() {
    if (run.options.exportAnimation == 0) {
        return;
    }
    WriteAnimationFiles(run);
    run.texts->animWriter.reset();
    const bool isListed = !run.motion->animations.empty();
    NoteFile(run, AnimationListPath(run), isListed ? eFileRule::EveryRun : eFileRule::NoAnimations);
    if (!isListed) {
        RemoveAnimationList(run);
    }
    run.modelReports[run.model->modelIndex].animations =
        static_cast<int>(std::ranges::count(run.motion->animations, true, &eExportAnimation::inRange));
}
