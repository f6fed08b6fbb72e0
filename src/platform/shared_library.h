// A file of code that is loaded while the process runs.
#pragma once

#include <string>

namespace platform {

class eSharedLibrary {
public:
    eSharedLibrary() = default;
    ~eSharedLibrary();  // unloads
    eSharedLibrary(const eSharedLibrary&) = delete;
    eSharedLibrary& operator=(const eSharedLibrary&) = delete;

    // Loads the file, which is named as the operating system spells it (UTF-8). Empty, or the system's words
    // for what is wrong with it. Call it once.
    std::string Load(const std::string& nativePath);

    // The same with a library of the system, by its name alone: it is searched for where the system keeps its
    // libraries.
    std::string LoadFromSystem(const std::string& name);

    // The address of what the file exports under the name; null if it exports nothing of that name.
    void* Find(const char* name) const;

private:
    void* handle = nullptr;
};

}  // namespace platform
