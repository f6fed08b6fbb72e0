#pragma once

#include <functional>
#include <string>

#include "cli/run/run_record.h"
#include "platform/memory_layer.h"
#include "scene/run_journal.h"

class Export;

namespace cli {

// An export that touches nothing on disk, for whoever wants to say what it would do: its files stay in
// memory, and its stages note what they decide.
struct eDryRun {
    platform::eMemoryLayer files;
    eRunJournal journal;
    bool isMute = false;           // whoever asks tells the messages himself
    bool findsModelsOnly = false;  // the run ends when it knows which models the scene has
    bool endsAtOptions = false;    // nothing is exported: only the options of the run are wanted
    bool needsNoRoot = false;      // a resource root on a drive that is not there will do
    // Called once at the end of the run, also of one that a fatal error ends: the process ends after it.
    std::function<void(Export&, const eRunRecord&)> tell;
};

// A folder that is not there, for an answer that hangs on no resource tree.
std::string NoFolder();

}  // namespace cli
