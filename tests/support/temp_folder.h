// A folder of its own for a test, removed with all its content at the end.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

namespace support {

class eTempFolder {
public:
    eTempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zyr_test_XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        folder = pattern;
    }
    ~eTempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    eTempFolder(const eTempFolder&) = delete;
    eTempFolder& operator=(const eTempFolder&) = delete;

    // The path in UTF-8, without trailing slash.
    std::string Path() const { return folder.string(); }
    // The path of a name in the folder.
    std::string operator/(const std::string& name) const { return (folder / name).string(); }

    bool Has(const std::string& name) const { return std::filesystem::exists(folder / name); }
    void MakeFolder(const std::string& name) const { std::filesystem::create_directories(folder / name); }

    std::string Read(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Write(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << content;
    }

private:
    std::filesystem::path folder;
};

}  // namespace support
