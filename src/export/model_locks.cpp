#include "export/model_locks.h"

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "export/model_folders.h"
#include "platform/drive_table.h"
#include "platform/file_layer.h"
#include "platform/folder_lock.h"
#include "platform/path_lookup.h"
#include "platform/write_fence.h"
#include "run/export.h"
#include "run/run_flags.h"
#include "run/tell.h"
#include "scene/scene_as_read.h"

namespace {

using Clock = std::chrono::steady_clock;

struct eModelLock {
    platform::eFolderLock lock;
    std::size_t model = 0;
    std::string folder;
    bool isLocked = false;
};

// Not of the run, so that they are let go of too where a fatal error ends the process.
std::vector<eModelLock>& Held() {
    static std::vector<eModelLock> locks;
    return locks;
}

// Models of the run by the folders that they are about to write. What is not written is left to be told
// later.
std::map<std::string, std::size_t> WrittenFolders(const Export& run) {
    std::map<std::string, std::size_t> folders;
    for (std::size_t index = 0; index < run.scene->models.size(); ++index) {
        const host::INode& root = *run.scene->models[index].root;
        const std::optional<eName> folder = FolderOfModel(run, root);
        std::string model;
        if (folder && root.GetUserPropString("Model", model) && !platform::HasDrive(model) &&
            platform::IsWriteAllowed(folder->Text())) {
            folders.emplace(platform::DiskPath(folder->Text()), index);
        }
    }
    return folders;
}

void TellOfLock(Export& run, eMessageId id, std::size_t model, const std::string& owner) {
    const host::INode& root = *run.scene->models[model].root;
    Tell(run, id, {.node = host::PathOf(root), .property = "Model"}, FolderOfModel(run, root)->Text(), owner);
}

// False if the folder is still in use at the end of the time.
bool Take(Export& run, const std::string& folder, std::size_t model, Clock::time_point end) {
    constexpr std::chrono::milliseconds kAtOnce(0);
    constexpr std::chrono::milliseconds kBetweenTwoPolls(200);
    eModelLock taken{.lock = {}, .model = model, .folder = folder};
    std::string owner;
    platform::eLockAnswer answer = taken.lock.Take(folder, kAtOnce, owner);
    if (answer == platform::eLockAnswer::InUse && Clock::now() < end) {
        TellOfLock(run, eMessageId::RunWaitingForLock, model, owner);
    }
    while (answer == platform::eLockAnswer::InUse && Clock::now() < end) {
        if (run.host->GetCancel()) {
            return false;
        }
        answer = taken.lock.Take(folder, kBetweenTwoPolls, owner);
    }
    if (answer == platform::eLockAnswer::InUse) {
        TellOfLock(run, eMessageId::RunFolderInUse, model, owner);
        return false;
    }
    taken.isLocked = answer == platform::eLockAnswer::Held;
    Held().push_back(std::move(taken));
    return true;
}

}  // namespace

eModelLocks::eModelLocks(Export& owner) : run(owner) {
    if (!platform::Files().IsLasting()) {
        return;
    }
    const Clock::time_point end = Clock::now() + std::chrono::seconds(longestLockWait);
    for (const auto& [folder, model] : WrittenFolders(run)) {
        areHeld = areHeld && Take(run, folder, model, end);
    }
}

eModelLocks::~eModelLocks() {
    for (eModelLock& held : Held()) {
        if (!run.modelReports[held.model].folder.Text().empty()) {
            held.lock.KeepFolder();
        }
    }
    Held().clear();
}

std::vector<std::string> eModelLocks::OlderFolders() const {
    std::vector<std::string> folders;
    for (const eModelLock& held : Held()) {
        if (held.isLocked && !held.lock.HasMadeFolders()) {
            folders.push_back(held.folder);
        }
    }
    return folders;
}
