#include "standalone/loaders/assimp/assimp_files.h"

#include <algorithm>
#include <cstring>

#include "standalone/data/file_content.h"

namespace standalone {
namespace {

// A file in memory that the library reads through functions of C.
class eMemoryFile : public aiFile {
public:
    explicit eMemoryFile(std::string_view content) : bytes(content) { SetDoors(); }
    explicit eMemoryFile(std::string content) : own(std::move(content)), bytes(own) { SetDoors(); }
    eMemoryFile(const eMemoryFile&) = delete;
    eMemoryFile& operator=(const eMemoryFile&) = delete;

    static void Close(aiFileIO*, aiFile* file) { delete static_cast<eMemoryFile*>(file); }

private:
    void SetDoors() {
        ReadProc = [](aiFile* file, char* buffer, std::size_t size, std::size_t count) {
            return Of(file).Read(buffer, size, count);
        };
        WriteProc = [](aiFile*, const char*, std::size_t, std::size_t) { return std::size_t{0}; };
        TellProc = [](aiFile* file) { return Of(file).offset; };
        FileSizeProc = [](aiFile* file) { return Of(file).bytes.size(); };
        SeekProc = [](aiFile* file, std::size_t distance, aiOrigin origin) {
            return Of(file).Seek(distance, origin);
        };
        FlushProc = [](aiFile*) {};
        UserData = nullptr;
    }

    static eMemoryFile& Of(aiFile* file) { return *static_cast<eMemoryFile*>(file); }

    std::size_t Read(char* buffer, std::size_t size, std::size_t count) {
        const std::size_t whole = size == 0 ? 0 : std::min(count, (bytes.size() - offset) / size);
        std::memcpy(buffer, bytes.data() + offset, whole * size);
        offset += whole * size;
        return whole;
    }
    aiReturn Seek(std::size_t distance, aiOrigin origin) {
        const std::size_t from = origin == aiOrigin_SET ? 0 : origin == aiOrigin_CUR ? offset : bytes.size();
        const std::size_t target = from + distance;  // backwards by wrapping round
        if (target > bytes.size()) {
            return aiReturn_FAILURE;
        }
        offset = target;
        return aiReturn_SUCCESS;
    }

    std::string own;
    std::string_view bytes;
    std::size_t offset = 0;
};

}  // namespace

eAssimpFiles::eAssimpFiles(std::string scenePath, std::string_view sceneBytes, std::string sceneFolder)
    : path(std::move(scenePath)),
      bytes(sceneBytes),
      folder(std::move(sceneFolder)),
      doors{Open, eMemoryFile::Close, reinterpret_cast<aiUserData>(this)} {}

aiFile* eAssimpFiles::Open(aiFileIO* files, const char* file, const char* mode) {
    const eAssimpFiles& own = *reinterpret_cast<const eAssimpFiles*>(files->UserData);
    if (mode == nullptr || *mode != 'r') {
        return nullptr;
    }
    if (file == own.path) {
        return new eMemoryFile(own.bytes);
    }
    std::string content;
    return ReadFileContent(own.folder + "/" + file, content).IsOk() ? new eMemoryFile(std::move(content))
                                                                    : nullptr;
}

}  // namespace standalone
