// A folder of its own for a test, removed with all its content at the end.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

#include "platform/utf8_path.h"

namespace support {

// Names and paths are UTF-8, with slashes.
class eTempFolder {
public:
    // Its name has letters of both cases.
    eTempFolder() {
        std::random_device random;
        do {
            folder = std::filesystem::temp_directory_path() / ("zyr_Test_" + std::to_string(random()));
        } while (!std::filesystem::create_directory(folder));
    }
    ~eTempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    eTempFolder(const eTempFolder&) = delete;
    eTempFolder& operator=(const eTempFolder&) = delete;

    // Without trailing slash.
    std::string Path() const { return platform::Utf8FromPath(folder); }
    // The path of a name in the folder.
    std::string operator/(const std::string& name) const { return platform::Utf8FromPath(In(name)); }

    bool Has(const std::string& name) const { return std::filesystem::exists(In(name)); }
    void MakeFolder(const std::string& name) const { std::filesystem::create_directories(In(name)); }

    std::string Read(const std::string& name) const {
        std::ifstream file(In(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Write(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories(In(name).parent_path());
        std::ofstream(In(name), std::ios::binary) << content;
    }

private:
    std::filesystem::path In(const std::string& name) const { return folder / platform::PathFromUtf8(name); }

    std::filesystem::path folder;
};

}  // namespace support
