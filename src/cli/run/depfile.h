// What a run has read and written, for the program that decides whether it has to run again.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/dependency_layer.h"

namespace cli {

struct eRunRecord;

// Native paths.
struct eSources {
    std::set<std::string> files;
    std::set<std::string> missing;  // looked for in vain
};

// What a run hangs on: what it asked for and didn't write itself, the options file, which it may have stored
// anew, and the files in `others`. Below the resource root nothing is missing: other runs bring it.
eSources SourcesOf(const eRunRecord& record, const platform::eDependencyLayer& layer,
                   const std::vector<std::string>& others);

// Names with line breaks are left out of both texts, which can't tell them.

// A path a line, with "missing: " before those that are.
std::string SourceListText(const eSources& sources);

// A rule in the format of make: the targets hang on the sources. What is missing is told by the nearest
// folder that stands, whose time changes when the file comes.
std::string DepfileText(const std::vector<std::string>& targets, const eSources& sources);

}  // namespace cli
