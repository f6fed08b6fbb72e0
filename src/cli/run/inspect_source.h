#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/bilingual.h"

namespace cli {

// A file that inspect looks into.
struct eInspectedFile {
    std::string
        path;  // as it is told, UTF-8: the path of a loose file, or the name in the folder or container
    std::string name;  // for inspect::InspectContent
    std::vector<std::uint8_t> content;
    eBilingual problem;  // UTF-8; why there is no content, empty if there is
};

// "game.pak:/units/tank.mdl" is the path of a container and a name in it; of any other path the name is
// empty.
struct eContainerPath {
    std::string path;
    std::string name;
};
eContainerPath SplitContainer(const std::string& typed);

// What is read of a tree.
enum class eReadFiles { Written, All };  // of the kinds that the export always writes itself, or every file

// True for a folder, a container, or a folder in one.
bool IsTree(const std::string& typed);

// Reads what the user has typed, a path that exists. A folder or a container is mounted, and its files come
// in byte order of the names, so that a folder and the container made of it look the same; so do the texts
// that a text includes. For a loose file they are looked up beside it.
void ReadInspected(const std::string& typed, const std::function<void(const eInspectedFile&)>& visit,
                   eReadFiles files = eReadFiles::Written);

}  // namespace cli
