#include "platform/memory_layer.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <system_error>
#include <utility>

#include "platform/file_events.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"

namespace platform {
namespace {

eIoStatus StatusOf(eIoReason reason, std::errc code) {
    return {reason, static_cast<int>(code)};
}

eIoStatus NotFound() {
    return StatusOf(eIoReason::NotFound, std::errc::no_such_file_or_directory);
}

eIoStatus IsAFolder() {
    return StatusOf(eIoReason::AccessDenied, std::errc::is_a_directory);
}

std::int64_t Now() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

class eMemoryFile : public eOpenFile {
public:
    eMemoryFile(std::shared_ptr<eFileContent> bytes, bool isWritten)
        : content(std::move(bytes)), writes(isWritten) {}

    eIoStatus Close() override { return {}; }
    eIoStatus Read(void* data, std::size_t count, std::size_t& got) override {
        got = position < content->size() ? std::min(count, content->size() - position) : 0;
        if (got > 0) {
            std::memcpy(data, content->data() + position, got);
            position += got;
        }
        return {};
    }
    eIoStatus Write(const void* data, std::size_t count) override {
        if (!writes) {
            return StatusOf(eIoReason::Other, std::errc::bad_file_descriptor);
        }
        if (count > 0) {
            content->resize(std::max(content->size(), position + count));
            std::memcpy(content->data() + position, data, count);
            position += count;
        }
        return {};
    }
    eIoStatus Seek(std::int64_t target) override {
        position = static_cast<std::size_t>(target);
        return {};
    }
    eIoStatus Truncate(std::int64_t length) override {
        content->resize(static_cast<std::size_t>(length));
        return {};
    }
    eIoStatus Length(std::int64_t& length) const override {
        length = static_cast<std::int64_t>(content->size());
        return {};
    }
    eIoStatus Sync() override { return {}; }

private:
    std::shared_ptr<eFileContent> content;
    std::size_t position = 0;
    bool writes;
};

}  // namespace

eIoStatus eMemoryLayer::Open(const std::string& native, eFileAccess access, ePathForm form,
                             std::unique_ptr<eOpenFile>& file) {
    const eEntry* entry = Find(native);
    if (IsNullDevice(native) || (access == eFileAccess::Read && entry == nullptr)) {
        return below.Open(native, access, form, file);
    }
    if (KindOf(native) == eEntryKind::Folder) {
        return IsAFolder();
    }
    if (access == eFileAccess::Read) {
        if (entry->kind == eEntryKind::None) {
            return NotFound();
        }
        file = std::make_unique<eMemoryFile>(entry->content, false);
        return {};
    }
    auto content = std::make_shared<eFileContent>();
    eIoStatus status = CheckParent(native);
    if (status.IsOk() && access == eFileAccess::Write && KindOf(native) == eEntryKind::File) {
        status = ReadWhole(*this, native, *content);
    }
    if (status.IsOk()) {
        Put(native, eEntryKind::File, content);
        file = std::make_unique<eMemoryFile>(std::move(content), true);
    }
    return status;
}

eIoStatus eMemoryLayer::Rename(const std::string& source, const std::string& target) {
    if (KindOf(target) == eEntryKind::Folder) {
        return IsAFolder();
    }
    const eEntry* entry = Find(source);
    auto content = entry != nullptr ? entry->content : nullptr;
    eIoStatus status;
    if (content == nullptr) {
        content = std::make_shared<eFileContent>();
        status = ReadWhole(*this, source, *content);
    }
    if (status.IsOk()) {
        Forget(source);
        Put(target, eEntryKind::File, content);
    }
    return status;
}

eIoStatus eMemoryLayer::MakeFolder(const std::string& native) {
    if (KindOf(native) != eEntryKind::None) {
        return StatusOf(eIoReason::Exists, std::errc::file_exists);
    }
    const eIoStatus status = CheckParent(native);
    if (status.IsOk()) {
        Put(native, eEntryKind::Folder);
    }
    return status;
}

eIoStatus eMemoryLayer::Remove(const std::string& native) {
    switch (KindOf(native)) {
        case eEntryKind::None:
            return NotFound();
        case eEntryKind::Folder:
            return IsAFolder();
        case eEntryKind::File:
            break;
    }
    Forget(native);
    TellFileEvent(eFileAction::Deleted, native, ePathForm::Native);
    return {};
}

eIoStatus eMemoryLayer::Discard(const std::string& native) {
    Forget(native);
    return {};
}

// Whoever opens a file to write has its content in memory, with the time of it.
eIoStatus eMemoryLayer::Touch(const std::string& native) {
    std::unique_ptr<eOpenFile> file;
    return KindOf(native) == eEntryKind::None ? NotFound()
                                              : Open(native, eFileAccess::Write, ePathForm::Native, file);
}

eEntryKind eMemoryLayer::KindOf(const std::string& native) const {
    const eEntry* entry = Find(native);
    return entry != nullptr ? entry->kind : below.KindOf(native);
}

std::optional<std::int64_t> eMemoryLayer::LastWriteTime(const std::string& native) const {
    const eEntry* entry = Find(native);
    if (entry == nullptr) {
        return below.LastWriteTime(native);
    }
    return entry->kind != eEntryKind::None ? std::optional(entry->lastWrite) : std::nullopt;
}

eIoStatus eMemoryLayer::CheckFolder(const std::string& native) const {
    const eEntry* entry = Find(native);
    if (entry == nullptr) {
        return below.CheckFolder(native);
    }
    return entry->kind == eEntryKind::Folder ? eIoStatus{} : NotFound();
}

const eMemoryLayer::eEntry* eMemoryLayer::Find(const std::string& native) const {
    const auto found = entries.find(NativeCaseKey(native));
    return found != entries.end() ? &found->second : nullptr;
}

void eMemoryLayer::Put(const std::string& native, eEntryKind kind, std::shared_ptr<eFileContent> content) {
    entries[NativeCaseKey(native)] = {kind, std::move(content), Now()};
}

// What lies below is covered; what memory alone has seen leaves no trace.
void eMemoryLayer::Forget(const std::string& native) {
    if (below.KindOf(native) != eEntryKind::None) {
        Put(native, eEntryKind::None);
    } else {
        entries.erase(NativeCaseKey(native));
    }
}

eIoStatus eMemoryLayer::CheckParent(const std::string& native) const {
    const std::string parent = NativeParent(native);
    return CheckFolder(parent.empty() ? "/" : parent);
}

}  // namespace platform
