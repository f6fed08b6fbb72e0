// What a run would do to the files of the resource tree: made from a run whose files stay in memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/bilingual.h"
#include "inspect/description.h"
#include "platform/memory_layer.h"
#include "run/export.h"
#include "scene/run_journal.h"

namespace answers {

enum class eFileState {
    New,
    Changed,
    Same,  // written, with the bytes that it has
    Kept,  // not written
    Deleted,
    LeftOver,  // in the folder of a model, and nothing writes it any more
};

struct ePlannedFile {
    std::string path;  // on disk, UTF-8
    eFileState state = eFileState::New;
    bool differsInHead = false;          // the same but for the comment line with time and user
    std::optional<std::int64_t> before;  // bytes; nothing where there is no file
    std::optional<std::int64_t> after;
    std::string rule;                // that decided, for machines; empty for a leftover
    eBilingual why;                  // UTF-8
    std::vector<std::string> nodes;  // that feed it
    std::vector<std::string> materials;
    std::string source;  // of a picture
};

struct eRunPlan {
    std::string scene;                // as the user named it
    std::string root;                 // the resource root on disk
    std::vector<ePlannedFile> files;  // by path

    int Count(eFileState state) const;
    // The root under the spelling that it will be made in.
    void SpellRoot(const std::string& spelling);
};

// Reads what lies on disk and changes nothing. A run that has not come to its end, or was asked for a part of
// the scene only, tells nothing of leftovers: it does not know what else is written.
eRunPlan MakePlan(const Export& run, const platform::eMemoryLayer& files, const eRunJournal& journal,
                  bool isComplete);

// The version of the plan's keys; rises when one is taken out or changes its meaning.
inline constexpr int kPlanSchema = 1;

inspect::eDescription DescribePlan(const eRunPlan& plan);
// For people, UTF-8: a line for each file, with its path below the resource root.
std::string PlanText(const eRunPlan& plan, eLanguage language);

}  // namespace answers
