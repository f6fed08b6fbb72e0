#include <string_view>

#include "base/diagnostics.h"
#include "base/format.h"
#include "base/thread_storage.h"
#include "io/name.h"
#include "io/path.h"
#include "io/repository/repository.h"
#include "io/repository/repository_table.h"
#include "platform/user.h"

namespace xIo::xRepository {
namespace {

struct ePaths {
    std::vector<std::string> folders = {""};
};

ePaths& ThreadPaths() {
    static eThreadStorage<ePaths> paths;
    return paths.Get();
}

[[noreturn]] void FailWith(const char* message, const std::string& name) {
    Fail(__FILE__, __LINE__, (format(message) % name).Text());
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

std::string InUserFolder(const std::string& name) {
    if (name.size() < 2 || name[1] != '/') {
        FailWith("%1%: Wrong resource name syntax", name);
    }
    return "//" + UserFolder() + name.substr(2);
}

std::string ParentOf(std::string folder) {
    if (folder.ends_with('/')) {
        folder.pop_back();
    }
    return FolderOf(folder);
}

std::string InCurrentFolder(const std::string& name) {
    constexpr std::string_view kUp = "../";
    std::string folder = CurrentFolder();
    std::string_view rest = name;
    for (; rest.starts_with(kUp); rest.remove_prefix(kUp.size())) {
        if (folder.empty()) {
            FailWith("%1%: Attempting to reach path outside resources", name);
        }
        folder = ParentOf(folder);
    }
    return folder.append(rest);
}

}  // namespace

std::string Resolve(const std::string& name) {
    if (name.starts_with('/')) {
        return eName(name).Text();
    }
    return eName(name.starts_with('@') ? InUserFolder(name) : InCurrentFolder(name)).Text();
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
    ThreadPaths().folders.push_back(Resolve(name));
}

void PopFolder() {
    if (!ThreadPaths().folders.empty()) {
        ThreadPaths().folders.pop_back();
    }
}

std::string CurrentFolder() {
    const auto& folders = ThreadPaths().folders;
    return folders.empty() ? std::string() : folders.back();
}

eFolderScope::eFolderScope(const std::string& resolved) {
    ThreadPaths().folders.push_back(resolved);
}

eFolderScope::~eFolderScope() {
    PopFolder();
}

std::string FolderOf(const std::string& name) {
    return name.substr(0, name.rfind('/') + 1);
}

}  // namespace xIo::xRepository
