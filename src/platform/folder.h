// Folders and the names in them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/io_status.h"
#include "platform/path_lookup.h"

namespace platform {

struct eFolderEntry {
    std::string name;  // code page 1251
    bool isFolder = false;
};

// True if the path can be reached; the file is not opened.
bool Exists(std::string_view path, ePathForm form = ePathForm::Resource);
bool IsFolder(std::string_view path, ePathForm form = ePathForm::Resource);

// Makes one folder; its parent must exist. Reason Exists if the name is taken already. Besides what the write
// fence allows, the folders above an allowed root may be made.
eIoStatus MakeFolder(std::string_view path, ePathForm form = ePathForm::Resource);

// Everything in the folder but "." and "..", in byte order of the names. Names that code page 1251 can't hold
// are left out.
eIoStatus ListFolder(std::string_view path, std::vector<eFolderEntry>& entries,
                     ePathForm form = ePathForm::Resource);

// Removes a file, or a folder with all its content. Links are removed, not followed. Tells the file observer
// of each file. Stops at the first failure.
eIoStatus RemoveTree(std::string_view path);

}  // namespace platform
