#include "standalone/loaders/assimp/assimp_files.h"

#include <algorithm>
#include <assimp/IOStream.hpp>
#include <cstring>
#include <memory>

#include "standalone/data/file_content.h"

namespace standalone {
namespace {

class eMemoryFile : public Assimp::IOStream {
public:
    explicit eMemoryFile(std::string_view content) : bytes(content) {}
    explicit eMemoryFile(std::string content) : own(std::move(content)), bytes(own) {}

    std::size_t Read(void* buffer, std::size_t size, std::size_t count) override {
        const std::size_t whole = size == 0 ? 0 : std::min(count, (bytes.size() - offset) / size);
        std::memcpy(buffer, bytes.data() + offset, whole * size);
        offset += whole * size;
        return whole;
    }
    std::size_t Write(const void*, std::size_t, std::size_t) override { return 0; }
    aiReturn Seek(std::size_t distance, aiOrigin origin) override {
        const std::size_t from = origin == aiOrigin_SET ? 0 : origin == aiOrigin_CUR ? offset : bytes.size();
        const std::size_t target = from + distance;  // backwards by wrapping round
        if (target > bytes.size()) {
            return aiReturn_FAILURE;
        }
        offset = target;
        return aiReturn_SUCCESS;
    }
    std::size_t Tell() const override { return offset; }
    std::size_t FileSize() const override { return bytes.size(); }
    void Flush() override {}

private:
    std::string own;
    std::string_view bytes;
    std::size_t offset = 0;
};

}  // namespace

bool eAssimpFiles::Exists(const char* file) const {
    std::string ignored;
    return file == path || ReadFileContent(folder + "/" + file, ignored).IsOk();
}

Assimp::IOStream* eAssimpFiles::Open(const char* file, const char* mode) {
    if (mode == nullptr || *mode != 'r') {
        return nullptr;
    }
    if (file == path) {
        return new eMemoryFile(bytes);
    }
    std::string content;
    return ReadFileContent(folder + "/" + file, content).IsOk() ? new eMemoryFile(std::move(content))
                                                                : nullptr;
}

}  // namespace standalone
