// Which scenes a batch consists of.
#pragma once

#include <string>
#include <vector>

#include "base/bilingual.h"

namespace batch {

struct eBatchScene {
    std::string path;  // absolute, UTF-8, with slashes
    std::vector<std::string>
        flags;  // of `zyrexport export`, for this scene alone; behind those of all scenes

    bool operator==(const eBatchScene&) const = default;
};

struct eSceneList {
    std::vector<eBatchScene> scenes;   // in the order of the words, those of one word by path; each path once
    std::vector<eBilingual> problems;  // what in the words can't be used, with its place; UTF-8
};

// Each word is one of
//   a scene file;
//   a folder: all scene files below it, but not those in folders whose names begin with a dot;
//   a pattern: `*` and `?` stand for letters of one name, `**` for any number of folders;
//   a list, NAME.json: {"schema": 1, "flags": [...], "scenes": [...]}, where a scene is a word like these,
//   with paths from the folder of the list, or {"scene": word, "flags": [...]}.
// A word that stands for no scene is a problem. The flags of the first word that names a scene count.
eSceneList ListScenes(const std::vector<std::string>& words);

}  // namespace batch
