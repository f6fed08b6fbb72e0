#pragma once

#include <string>
#include <vector>

#include "run/options.h"
#include "scene/run_journal.h"

namespace answers {

struct eLeftOverFile {
    std::string path;  // on disk, UTF-8
    std::int64_t bytes = 0;
    bool isOfKilledRun = false;  // under a .tmp name: the next export removes it
};

// The files in the folders of the run's models that are of the kinds that an export writes and that no note
// of the run mentions.
std::vector<eLeftOverFile> FindLeftOver(const eRunJournal& journal, const eExportOptions& options);

}  // namespace answers
