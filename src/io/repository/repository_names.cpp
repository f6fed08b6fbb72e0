#include <string_view>

#include "base/thread_storage.h"
#include "io/name.h"
#include "io/path.h"
#include "io/repository/repository.h"
#include "io/repository/repository_table.h"
#include "platform/user.h"

namespace xIo::xRepository {
namespace {

struct eCurrentFolder {
    std::string name;
    const eFolderScope* scope = nullptr;  // null for one of PushFolder
};

struct ePaths {
    std::vector<eCurrentFolder> folders = {{}};
};

ePaths& ThreadPaths() {
    static eThreadStorage<ePaths> paths;
    return paths.Get();
}

// Where the user keeps documents, with the application's subfolder and a slash behind. It is made if it does
// not exist.
std::string UserFolder() {
    static const std::string documents = platform::DocumentsFolder();
    std::string folder = (eName(documents) / Settings().userSubfolder).Text();
    if (!folder.ends_with('/')) {
        folder += '/';
    }
    CreateFolders(folder);
    return folder;
}

eResolvedName InUserFolder(const std::string& name) {
    if (name.size() < 2 || name[1] != '/') {
        return {{}, "%1%: Wrong resource name syntax"};
    }
    return {"//" + UserFolder() + name.substr(2)};
}

std::string ParentOf(std::string folder) {
    if (folder.ends_with('/')) {
        folder.pop_back();
    }
    return FolderOf(folder);
}

eResolvedName InCurrentFolder(const std::string& name) {
    constexpr std::string_view kUp = "../";
    std::string folder = CurrentFolder();
    std::string_view rest = name;
    for (; rest.starts_with(kUp); rest.remove_prefix(kUp.size())) {
        if (folder.empty()) {
            return {{}, "%1%: Attempting to reach path outside resources"};
        }
        folder = ParentOf(folder);
    }
    return {folder.append(rest)};
}

}  // namespace

eResolvedName ResolveName(const std::string& name) {
    eResolvedName resolved = name.starts_with('/')   ? eResolvedName{name}
                             : name.starts_with('@') ? InUserFolder(name)
                                                     : InCurrentFolder(name);
    resolved.name = eName(resolved.name).Text();
    return resolved;
}

std::string MapPath(const std::string& name) {
    return MapResolved(Resolve(name));
}

std::string MapResolved(const std::string& resolved) {
    const auto* file = dynamic_cast<const eFileStorage*>(FindStorage(resolved));
    if (file != nullptr && !resolved.ends_with('/')) {
        return file->path;
    }
    const std::string path =
        resolved.starts_with("//") ? resolved.substr(2) : (eName(Settings().basePath) / resolved).Text();
    const auto& mappers = Settings().pathMappers;
    return mappers.empty() ? path : mappers.back()(path);
}

void PushFolder(const std::string& name) {
    ThreadPaths().folders.push_back({Resolve(name), nullptr});
}

void PopFolder() {
    if (!ThreadPaths().folders.empty()) {
        ThreadPaths().folders.pop_back();
    }
}

std::string CurrentFolder() {
    const auto& folders = ThreadPaths().folders;
    return folders.empty() ? std::string() : folders.back().name;
}

eFolderScope::eFolderScope(const std::string& resolved) {
    ThreadPaths().folders.push_back({resolved, this});
}

eFolderScope::~eFolderScope() {
    std::erase_if(ThreadPaths().folders,
                  [this](const eCurrentFolder& folder) { return folder.scope == this; });
}

std::string FolderOf(const std::string& name) {
    return name.substr(0, name.rfind('/') + 1);
}

}  // namespace xIo::xRepository
