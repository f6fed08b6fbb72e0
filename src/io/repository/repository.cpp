#include "io/repository/repository.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/diagnostics.h"
#include "base/failure_report.h"
#include "base/format.h"
#include "io/name.h"
#include "io/repository/folder_walk.h"
#include "io/repository/part_name.h"
#include "io/repository/repository_table.h"
#include "io/repository/zip_storage.h"
#include "io/streams/stream_memory.h"
#include "platform/file.h"
#include "platform/folder.h"

namespace xIo::xRepository {
namespace {

// As reports name this source, wherever it lies.
constexpr const char* kSource = "io/repository";

bool IsExcluded(const eName& name) {
    return std::ranges::count(Settings().excludedExtensions, name.Part(eName::Extension).Text()) > 0;
}

void MountContainer(const std::string& name, const std::string& path) {
    const std::string folder = FolderOf(name);
    for (eZipFile& file : ReadContainer(path)) {
        if (!IsExcluded(file.name)) {
            Register(std::move(file.storage), folder + file.name);
        }
    }
}

void MountFile(const std::string& name, const std::string& path, std::int64_t size) {
    const eName file(path);
    if (IsExcluded(file)) {
        return;
    }
    if (file.Part(eName::Extension).Text() == ".pak") {
        MountContainer(name, path);
        return;
    }
    // What a stream can't hold is told when it is opened.
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    auto storage = std::make_unique<eFileStorage>();
    storage->path = path;
    storage->size = static_cast<std::int32_t>(std::min(size, kLargest));
    Register(std::move(storage), name);
}

// The name of the whole of which this one is a part; empty for a name that is no part.
std::string WholeOf(const eName& name) {
    if (!IsPartName(name)) {
        return {};
    }
    std::string title = name.Part(eName::Title);
    title.pop_back();
    return name.Part(eName::Folder).Text() + title + name.Part(eName::Extension).Text();
}

// The head of the chain stays, whatever it is.
void JoinChain(eStorage& head, std::unique_ptr<eStorage> part) {
    std::unique_ptr<eStorage>* place = &head.next;
    while (*place && !(*place)->IsSame(*part)) {
        place = &(*place)->next;
    }
    if (*place) {
        part->next = std::move((*place)->next);
    }
    *place = std::move(part);
}

std::unique_ptr<eStream> OpenPart(eStorage& part, const std::string& name) {
    std::unique_ptr<eStream> stream = part.Open(streamRead);
    if (!stream) {
        Fail(kSource, __LINE__, (format("%1%: can't be opened") % name).Text());
    }
    return stream;
}

std::unique_ptr<eStream> OpenChain(eStorage& head, const std::string& name) {
    constexpr int kGrowStep = 0x100;
    auto whole = std::make_unique<eMemoryStream>(kGrowStep, kGrowStep);
    for (eStorage* part = &head; part != nullptr; part = part->next.get()) {
        whole->WriteFrom(*OpenPart(*part, name), -1);
    }
    whole->Seek(0, fromStart);
    return whole;
}

void MountOnDemand(const std::string& resolved) {
    if (Settings().mountOnDemand) {
        Mount(resolved, MapResolved(resolved));
    }
}

}  // namespace

eSettings& Settings() {
    static eSettings settings;
    return settings;
}

eTable& Table() {
    static eTable table;
    return table;
}

eStorage* FindStorage(const std::string& resolved) {
    const auto entry = Table().find(resolved);
    return entry == Table().end() ? nullptr : entry->second.get();
}

void Mount(const std::string& name, const std::string& path) {
    std::string place = path;
    if (place.size() > 1 && place.ends_with('/')) {
        place.pop_back();
    }
    if (platform::IsFolder(place)) {
        const std::string problems =
            WalkFolder(eName(name), place, Settings().excludedFolders,
                       [](const eWalkedFile& file) { MountFile(file.name, file.path, file.size); });
        if (!problems.empty()) {
            Warn(__FILE__, __LINE__, problems);
        }
        return;
    }
    platform::eFile file;
    std::int64_t size = 0;
    if (file.Open(place, platform::eFileAccess::Read).IsOk() && file.Length(size).IsOk()) {
        MountFile(eName(name), place, size);
    }
}

void Register(std::unique_ptr<eStorage> storage, const std::string& name) {
    const eName own(name);
    const std::string whole = WholeOf(own);
    if (whole.empty()) {
        Table()[own] = std::move(storage);
    } else if (eStorage* head = FindStorage(whole)) {
        JoinChain(*head, std::move(storage));
    } else {
        const char* text = "Using multi-part before 1st resource mount - '%1%'. Content loss is possible.";
        Warn(__FILE__, __LINE__, (format(text) % storage->Description()).Text());
        Register(std::move(storage), whole);
        return;
    }
    if (!Settings().mountListeners.empty()) {
        Settings().mountListeners.back()(name);
    }
}

void Clear() {
    Table().clear();
}

std::string Resolve(const std::string& name) {
    const eResolvedName resolved = ResolveName(name);
    if (resolved.problem != nullptr) {
        Fail(kSource, __LINE__, (format(resolved.problem) % name).Text());
    }
    return resolved.name;
}

std::unique_ptr<eStream> OpenResource(const std::string& name) {
    return OpenResolved(Resolve(name));
}

std::unique_ptr<eStream> OpenResolved(const std::string& resolved) {
    MountOnDemand(resolved);
    if (!Settings().openHooks.empty()) {
        Settings().openHooks.back()(resolved);
    }
    eStorage* storage = FindStorage(resolved);
    if (storage == nullptr) {
        Fail(kSource, __LINE__, (format("File not found - %1%") % resolved).Text());
    }
    return storage->next ? OpenChain(*storage, resolved) : OpenPart(*storage, resolved);
}

bool Exists(const std::string& name) {
    const eResolvedName resolved = ResolveName(name);
    if (resolved.problem != nullptr) {
        return false;
    }
    // What a damaged container fails with is told to whoever asks for its content.
    FailureReport([&resolved] { MountOnDemand(resolved.name); });
    return FindStorage(resolved.name) != nullptr;
}

std::vector<std::string> Names() {
    std::vector<std::string> names;
    names.reserve(Table().size());
    for (const auto& entry : Table()) {
        names.push_back(entry.first);
    }
    return names;
}

}  // namespace xIo::xRepository
