#pragma once

#include "scene/run_journal.h"

struct eBoneStep;

// What the bone writer has settled about a node, noted for whoever asks afterwards (run_journal.h). Nothing
// to do where nobody does.

// What the node is and where it hangs.
void NoteStep(Export& run, const eBoneStep& step);
// The rule that leaves it out, with all below it; a level of detail that its bone has called for is in the
// files.
void NoteStepLeftOut(Export& run, const eBoneStep& step);
// The rule by which a node ends the walk of its model.
void NoteWalkEnd(Export& run, const host::INode& node, eLeftOut why);
// Whose mesh it shows.
void NoteMeshSource(Export& run, const eBoneStep& step);
// Where its own mesh is.
void NoteMeshFile(Export& run, const eBoneStep& step);
