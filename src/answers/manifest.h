// What a run has left in the resource tree and what that was made from, for whoever asks later whether it
// still stands.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "answers/content_mark.h"
#include "run/export.h"
#include "scene/run_journal.h"

namespace answers {

struct eManifestSource {
    std::string path;  // native
    eContentMark content;
};

// A file that was written, or found up to date.
struct eManifestFile {
    std::string path;  // from the resource root, as it is on disk
    eContentMark content;
    std::string rule;                 // that decided about it, the word of the plan
    std::vector<std::string> models;  // roots of those that write it
    std::vector<std::string> nodes;   // that feed it
    std::vector<std::string> materials;
    std::string animation;             // empty: none
    std::vector<std::string> sources;  // paths in the list of the manifest
};

// Texts are UTF-8.
struct eManifest {
    std::string program;                   // that has made the files, with its version
    std::string scene;                     // native
    std::string root;                      // the resource root, native
    std::vector<eManifestSource> sources;  // by path
    std::vector<std::string> missing;      // native paths that were looked for in vain
    std::vector<eManifestFile> files;      // by path
};

// Reads the files of a run that has come to its end, and its sources: native paths of what it has read and of
// what it has looked for in vain. A picture feeds the files that are made of it alone, any other source all.
eManifest MakeManifest(const Export& run, const eRunJournal& journal, const std::set<std::string>& sources,
                       const std::set<std::string>& missing);

}  // namespace answers
