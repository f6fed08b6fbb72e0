#include "scene/skeleton/step_notes.h"

#include "host/node.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/skeleton/bone_step.h"

namespace {

eLeftOut RuleOf(const eBoneStep& step) {
    if (step.node.IsNodeHidden()) {
        return eLeftOut::Hidden;
    }
    return step.level != 0 ? eLeftOut::LoneDetail : eLeftOut::NoNumber;
}

}  // namespace

void NoteStep(Export& run, const eBoneStep& step) {
    eNodeNote* const note = NoteOf(run, step.node);
    if (note == nullptr) {
        return;
    }
    note->leftOut = eLeftOut::No;
    note->model = run.model->currentRoot;
    note->kind = step.kind;
    note->decidedBy = step.decidedBy;
    note->isBone = step.isBone;
    note->number = step.index;
    note->parent = ParentBone(step.node);
    note->level = step.level;
}

void NoteStepLeftOut(Export& run, const eBoneStep& step) {
    const eNodeNote* const note = NoteOf(run, step.node);
    if (note != nullptr && note->model == nullptr) {
        NoteLeftOut(run, step.node, RuleOf(step));
    }
}

void NoteWalkEnd(Export& run, const host::INode& node, eLeftOut why) {
    if (eNodeNote* const note = NoteOf(run, node)) {
        note->leftOut = why;
        note->model = run.model->currentRoot;
    }
}

void NoteMeshSource(Export& run, const eBoneStep& step) {
    if (eNodeNote* const note = NoteOf(run, step.node)) {
        note->wish = step.wish;
        note->wishedBy = step.wishedBy;
        note->shownMesh = step.meshTarget != &step.node ? step.meshTarget : nullptr;
    }
}

void NoteMeshFile(Export& run, const eBoneStep& step) {
    if (eNodeNote* const note = NoteOf(run, step.node)) {
        const eResourceSets& sets = *run.resources;
        const bool isCommon = step.targetSet == &sets.commonResources;
        note->isMeshWritten = true;
        note->meshName = step.meshName.Text();
        note->meshFolder = isCommon ? sets.commonFolder : run.model->modelFolder;
        note->materialFolder = sets.commonPending ? sets.commonFolder : run.model->modelFolder;
    }
}
