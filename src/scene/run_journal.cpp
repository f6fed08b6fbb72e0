#include "scene/run_journal.h"

#include "run/export.h"
#include "scene/current_model.h"

eNodeNote* NoteOf(Export& run, const host::INode& node) {
    return run.journal != nullptr ? &run.journal->nodes[&node] : nullptr;
}

void NoteLeftOut(Export& run, const host::INode& node, eLeftOut why) {
    if (eNodeNote* const note = NoteOf(run, node)) {
        note->leftOut = why;
    }
}

eFileNote* NoteFile(Export& run, const eName& path, eFileRule rule) {
    if (run.journal == nullptr) {
        return nullptr;
    }
    eFileNote note;
    note.rule = rule;
    note.model = run.model->currentRoot;
    return &run.journal->files.try_emplace(path, std::move(note)).first->second;
}
