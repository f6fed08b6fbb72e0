#include "platform/folder_lock.h"

#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/code_page.h"
#include "platform/file_layer.h"
#include "platform/native_path.h"
#include "platform/user.h"
#include "platform/utf8_path.h"

namespace platform {

namespace {

constexpr const char* kLockName = ".zyrexport.lock";

bool IsThere(const std::string& folder) {
    std::error_code ignored;
    return std::filesystem::is_directory(PathFromUtf8(folder), ignored);
}

// The made ones go to the end of `made`. False if they are not all there.
bool MakeFolders(const std::string& folder, std::vector<std::string>& made) {
    if (IsThere(folder)) {
        return true;
    }
    const std::string parent = NativeParent(folder);
    if (parent.size() >= folder.size() || !MakeFolders(parent, made)) {
        return false;
    }
    const eIoStatus status = DiskLayer().MakeFolder(folder);
    if (status.IsOk()) {
        made.push_back(folder);
    }
    return status.IsOk() || status.reason == eIoReason::Exists;
}

std::string OwnerText() {
    return Utf8FromAnsi(AccountName()) + "@" + MachineName() + " (process " +
           std::to_string(ProcessNumber()) + ")";
}

std::string ReadOwner(const std::string& path) {
    eFileContent content;
    ReadWhole(DiskLayer(), path, content);
    const std::string text =
        AnsiFromUtf8(std::string(content.begin(), content.end())).value_or(std::string());
    return text.empty() ? "?" : text;
}

}  // namespace

eFolderLock::eFolderLock(eFolderLock&& other) noexcept
    : file(std::exchange(other.file, kNoFile)), path(std::move(other.path)), made(std::move(other.made)) {}

eFolderLock::~eFolderLock() {
    if (file != kNoFile) {
        ReleaseLockFile(path, file);
    }
    for (; !made.empty(); made.pop_back()) {
        std::error_code ignored;  // it is not empty
        std::filesystem::remove(PathFromUtf8(made.back()), ignored);
    }
}

eLockAnswer eFolderLock::Take(const std::string& folder, std::chrono::milliseconds longest,
                              std::string& owner) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kPause(20);
    const Clock::time_point end = Clock::now() + longest;
    eLockAnswer answer = Try(folder);
    while (answer == eLockAnswer::InUse && Clock::now() < end) {
        std::this_thread::sleep_for(kPause);
        answer = Try(folder);
    }
    if (answer == eLockAnswer::InUse) {
        owner = ReadOwner(path);
    }
    return answer;
}

eLockAnswer eFolderLock::Try(const std::string& folder) {
    path = NativeJoin(folder, kLockName);
    eLockAnswer answer = eLockAnswer::None;
    // Again where another run has just taken its empty folder away.
    do {
        if (!MakeFolders(folder, made)) {
            return eLockAnswer::None;
        }
        answer = TakeLockFile(path, OwnerText(), file);
    } while (answer == eLockAnswer::None && !IsThere(folder));
    return answer;
}

}  // namespace platform
