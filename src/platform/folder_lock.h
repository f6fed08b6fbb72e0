// A folder that one process at a time writes, on all machines that share it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace platform {

enum class eLockAnswer {
    Held,   // this process has it now
    InUse,  // another one has it
    None,   // it can't be locked: it is read-only, or its file system knows no locks
};

// The lock is a file in the folder that the system keeps for the process and lets go of when the process
// ends, however it ends. Where it was killed the file may stay, and locks nothing. The lock asks neither the
// file layer nor the fence.
class eFolderLock {
public:
    eFolderLock() = default;
    eFolderLock(eFolderLock&& other) noexcept;
    eFolderLock& operator=(eFolderLock&& other) = delete;
    ~eFolderLock();

    // Tries, and tries again as long as another process has the folder (native) and the time lasts. A folder
    // that is missing is made for the lock; it goes again at the end if nothing has come into it. Where the
    // answer is InUse, `owner` says who has the folder, in code page 1251: "anna@station7 (process 4711)".
    eLockAnswer Take(const std::string& folder, std::chrono::milliseconds longest, std::string& owner);

    // True if the folder, or one above it, was not there before.
    bool HasMadeFolders() const { return !made.empty(); }
    // The folder stays, empty or not.
    void KeepFolder() { made.clear(); }

private:
    eLockAnswer Try(const std::string& folder);

    static constexpr std::intptr_t kNoFile = -1;

    std::intptr_t file = kNoFile;   // as the system knows it
    std::string path;               // of the lock file
    std::vector<std::string> made;  // folders made for the lock, the deepest last
};

// The halves of the system. Opens the lock file for this process alone and writes the owner into it.
eLockAnswer TakeLockFile(const std::string& path, const std::string& owner, std::intptr_t& file);
// Takes the file away, then lets others have it.
void ReleaseLockFile(const std::string& path, std::intptr_t file);

}  // namespace platform
