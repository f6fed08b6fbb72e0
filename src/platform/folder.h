// Folders and the names in them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/io_status.h"
#include "platform/path_lookup.h"

namespace platform {

struct eFolderEntry {
    std::string name;  // code page 1251
    bool isFolder = false;
    std::int64_t size = 0;  // bytes of a file
};

// True if the path can be reached; the file is not opened.
bool Exists(std::string_view path, ePathForm form = ePathForm::Resource);
bool IsFolder(std::string_view path, ePathForm form = ePathForm::Resource);

// The same number for all paths to one folder, through links and other spellings; nothing if it can't be
// reached.
std::optional<std::uint64_t> FolderIdentity(std::string_view path);

// Makes one folder; its parent must exist. Reason Exists if the name is taken already. Besides what the write
// fence allows, the folders above an allowed root may be made.
eIoStatus MakeFolder(std::string_view path, ePathForm form = ePathForm::Resource);

// Everything in the folder but "." and "..", in byte order of the names. Names that code page 1251 can't hold
// are left out; they go to `nameless`, as they stand on disk, if it is not null.
eIoStatus ListFolder(std::string_view path, std::vector<eFolderEntry>& entries,
                     ePathForm form = ePathForm::Resource, std::vector<std::string>* nameless = nullptr);

// All names in a folder (native) but "." and "..", native too. Costs nothing where the names are remembered
// (folder_memory.h). Empty if it can't be read.
std::vector<std::string> NamesIn(const std::string& native);

// Removes a file, or a folder with all its content. Links are removed, not followed. Tells the file observer
// of each file. Stops at the first failure.
eIoStatus RemoveTree(std::string_view path, ePathForm form = ePathForm::Resource);

}  // namespace platform
