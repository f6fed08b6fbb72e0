// What the run asks of folders and paths on disk. Case of the names does not matter (platform/path_lookup.h).
#pragma once

#include <string>

// Creates the folder with all its parents. True if it exists at the end; a path that exists needs nothing.
bool CreateFolders(const std::string& path);

// Deletes a file, or a folder with its content. False if something is left over.
bool RemovePath(const std::string& path);

// Whether the path can be reached; the file is not opened.
bool PathExists(const std::string& path);
