// The names in folders, as long as a run remembers them (folder_memory.h).
#pragma once

#include <string>
#include <unordered_set>

namespace platform {

// The names in the folder; null where nothing is remembered or the folder has just been changed, so that its
// time tells nothing yet. Costs one system call for a folder that is known. Valid until the next change.
const std::unordered_set<std::string>* KnownNames(const std::string& folder);

// The same, but null also for a folder that would have to be read first.
const std::unordered_set<std::string>* RememberedNames(const std::string& folder);

// This module has made the file, or it stood there before; has made a folder, which is empty; has removed or
// renamed it.
void NoteMade(const std::string& native);
void NoteFolderMade(const std::string& native);
void NoteGone(const std::string& native);

}  // namespace platform
