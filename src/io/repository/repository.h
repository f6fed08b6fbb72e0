// A flat table of resources: loose files and the entries of .pak containers appear under one name space, and
// a later mount of a name replaces an earlier one. The table belongs to the process; mounts and reads of
// containers belong to one thread at a time.
//
// Names:
//   /a/b.txt    absolute in the table
//   @/a/b.txt   a file in the user's folder
//   //c:/b.txt  a real path
//   ../b.txt    relative to CurrentFolder; each "../" climbs one folder
//
// Every name is taken without regard to case and slashes (io/name.h).
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "io/repository/storage.h"
#include "io/streams/stream.h"

namespace xIo::xRepository {

// Settings and hooks of an application. Of each hook stack only the top entry acts.
struct eSettings {
    std::string userSubfolder;
    std::string basePath;  // where resources lie on disk that are not in the table
    bool mountOnDemand = false;
    std::vector<std::string> excludedExtensions;  // lower case, with the dot; empty: files without one
    std::vector<std::string> excludedFolders;     // lower case
    std::vector<std::function<std::string(const std::string& path)>> pathMappers;
    std::vector<std::function<void(const std::string& name)>> openHooks;
    std::vector<std::function<void(const std::string& name)>> mountListeners;
};
eSettings& Settings();

// The name in its absolute form. Fatal for "@" without a slash and for a name that climbs out of the table.
std::string Resolve(const std::string& name);
// The real path that belongs to a name.
std::string MapPath(const std::string& name);

// Registers a file, the entries of a .pak, or a folder's tree under the name. Nothing if the path does not
// exist. Fatal for a .pak that is damaged; nothing of it is registered then. The entries of a .pak appear as
// if they lay beside it. A folder is read in byte order of the names, and one that a link leads back into is
// not entered again.
void Mount(const std::string& name, const std::string& path);
// Enters one storage. A title that ends in "+" joins the resource of the name without it.
void Register(std::unique_ptr<eStorage> storage, const std::string& name);
// Forgets all resources; settings stay.
void Clear();

// A new stream on the whole resource. Fatal if there is no such resource or it can't be read. Costs the time
// of a look-up; an entry of a .pak is inflated at once.
std::unique_ptr<eStream> OpenResource(const std::string& name);
// The same for a name in its absolute form.
std::unique_ptr<eStream> OpenResolved(const std::string& resolved);
// True if the table holds the name. Never fails: a name that leads nowhere, and a damaged .pak that would be
// mounted on demand, hold nothing.
bool Exists(const std::string& name);
// All names of the table, in byte order.
std::vector<std::string> Names();

// The folder to which relative names belong, per thread; empty at the start. PushFolder resolves the name.
void PushFolder(const std::string& name);
void PopFolder();
std::string CurrentFolder();

// Makes a folder the current one while it lives. Scopes may end in any order, on the thread where they began.
class eFolderScope {
public:
    // The folder in its absolute form, with the slash at its end.
    explicit eFolderScope(const std::string& resolved);
    ~eFolderScope();
    eFolderScope(const eFolderScope&) = delete;
    eFolderScope& operator=(const eFolderScope&) = delete;
};

// Everything up to and with the last slash.
std::string FolderOf(const std::string& name);

}  // namespace xIo::xRepository
