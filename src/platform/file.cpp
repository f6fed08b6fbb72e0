#include "platform/file.h"

#include <string>

#include "platform/file_events.h"
#include "platform/file_layer.h"
#include "platform/native_path.h"

namespace platform {

eFile::eFile() = default;

eFile::~eFile() {
    Close();
}

eIoStatus eFile::Open(std::string_view path, eFileAccess access, ePathForm form) {
    Close();
    std::string native;
    const eIoStatus found = access != eFileAccess::Read ? MakeNativeForWriting(path, form, native)
                                                        : MakeNative(path, form, native);
    return found.IsOk() ? Files().Open(native, access, form, file) : found;
}

eIoStatus eFile::Close() {
    if (!IsOpen()) {
        return {};
    }
    const eIoStatus status = file->Close();
    file.reset();
    return status;
}

eIoStatus eFile::Read(void* data, std::size_t count, std::size_t& got) {
    return file->Read(data, count, got);
}

eIoStatus eFile::Write(const void* data, std::size_t count) {
    return file->Write(data, count);
}

eIoStatus eFile::Seek(std::int64_t position) {
    return file->Seek(position);
}

eIoStatus eFile::Truncate(std::int64_t length) {
    return file->Truncate(length);
}

eIoStatus eFile::Length(std::int64_t& length) const {
    return file->Length(length);
}

eIoStatus eFile::Sync() {
    return Files().Sync(*file);
}

eIoStatus RenameOver(std::string_view source, std::string_view target, ePathForm form) {
    std::string nativeSource;
    std::string nativeTarget;
    eIoStatus status = MakeNativeForWriting(source, form, nativeSource);
    if (status.IsOk()) {
        status = MakeNativeForWriting(target, form, nativeTarget);
    }
    if (status.IsOk()) {
        status = Files().Rename(nativeSource, nativeTarget);
    }
    if (status.IsOk()) {
        Files().SyncNames({NativeParent(nativeTarget)});
        TellFileEvent(eFileAction::Written, nativeTarget, ePathForm::Native);
    }
    return status;
}

eIoStatus DiscardFile(std::string_view path, ePathForm form) {
    std::string native;
    const eIoStatus status = MakeNativeForWriting(path, form, native);
    return status.IsOk() ? Files().Discard(native) : status;
}

}  // namespace platform
