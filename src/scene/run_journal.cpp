#include "scene/run_journal.h"

#include <algorithm>

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
    const auto [entry, isNew] = run.journal->files.try_emplace(path);
    eFileNote& note = entry->second;
    if (isNew) {
        note.rule = rule;
    }
    if (std::ranges::find(note.models, run.model->currentRoot) == note.models.end()) {
        note.models.push_back(run.model->currentRoot);
    }
    return &note;
}
