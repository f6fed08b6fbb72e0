#include "platform/posix/known_folders.h"

#include <sys/stat.h>

#include <ctime>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/folder_memory.h"
#include "platform/native_path.h"
#include "platform/posix/folder_names.h"

namespace platform {
namespace {

constexpr long kNanosecondsPerSecond = 1'000'000'000;

// Changes with every change of a folder's names that is more than a tick of the system's clock later.
struct eStamp {
    dev_t device = 0;
    ino_t number = 0;
    time_t seconds = 0;
    long nanoseconds = 0;

    bool operator==(const eStamp&) const = default;
};

struct eKnownFolder {
    std::optional<eStamp> stamp;
    std::unordered_set<std::string> names;
};

struct eMemory {
    bool isOn = false;
    std::unordered_map<std::string, eKnownFolder> folders;
};

eMemory& Memory() {
    static eMemory memory;
    return memory;
}

std::optional<eStamp> StampOf(const std::string& folder) {
    struct stat status;
    if (::stat(folder.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return eStamp{status.st_dev, status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

// True once the next change is sure to give another stamp.
bool IsSettled(const eStamp& stamp) {
    constexpr long kSlowestTick = 20'000'000;
    struct timespec now;
    ::clock_gettime(CLOCK_REALTIME, &now);
    const long age = (now.tv_sec - stamp.seconds) * kNanosecondsPerSecond + (now.tv_nsec - stamp.nanoseconds);
    return age > kSlowestTick;
}

std::string FolderOf(const std::string& native) {
    const std::string folder = NativeParent(native);
    return folder.empty() ? "/" : folder;
}

std::string NameOf(const std::string& native) {
    return native.substr(native.rfind('/') + 1);
}

// Null if the folder is not known.
eKnownFolder* FolderThatHolds(const std::string& native) {
    if (!Memory().isOn) {
        return nullptr;
    }
    const auto found = Memory().folders.find(FolderOf(native));
    return found != Memory().folders.end() ? &found->second : nullptr;
}

// Null if the folder can't be read, or is being changed.
const eKnownFolder* ReadFolder(const std::string& folder, const eStamp& stamp) {
    std::vector<std::string> names;
    if (!IsSettled(stamp) || !ListNames(folder, names).IsOk() || StampOf(folder) != stamp) {
        Memory().folders.erase(folder);
        return nullptr;
    }
    eKnownFolder& known = Memory().folders[folder];
    known.stamp = stamp;
    known.names = {names.begin(), names.end()};
    return &known;
}

}  // namespace

void RememberFolders(bool remembers) {
    if (remembers != Memory().isOn) {
        Memory().isOn = remembers;
        Memory().folders.clear();
    }
}

const std::unordered_set<std::string>* KnownNames(const std::string& folder) {
    if (const auto* const remembered = RememberedNames(folder)) {
        return remembered;
    }
    const std::optional<eStamp> stamp = Memory().isOn ? StampOf(folder) : std::nullopt;
    const eKnownFolder* const known = stamp ? ReadFolder(folder, *stamp) : nullptr;
    return known != nullptr ? &known->names : nullptr;
}

const std::unordered_set<std::string>* RememberedNames(const std::string& folder) {
    const auto found = Memory().folders.find(folder);
    const bool isKnown =
        found != Memory().folders.end() && found->second.stamp && found->second.stamp == StampOf(folder);
    return isKnown ? &found->second.names : nullptr;
}

void NoteMade(const std::string& native) {
    eKnownFolder* const known = FolderThatHolds(native);
    if (known != nullptr && known->names.insert(NameOf(native)).second) {
        known->stamp = StampOf(FolderOf(native));
    }
}

void NoteFolderMade(const std::string& native) {
    NoteMade(native);
    if (Memory().isOn) {
        Memory().folders[native] = {.stamp = StampOf(native), .names = {}};
    }
}

void NoteGone(const std::string& native) {
    eKnownFolder* const known = FolderThatHolds(native);
    if (known != nullptr && known->names.erase(NameOf(native)) != 0) {
        known->stamp = StampOf(FolderOf(native));
    }
}

}  // namespace platform
