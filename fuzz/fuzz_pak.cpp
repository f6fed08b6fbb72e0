// Any bytes as a container: mounting it and reading its entries must end with their content or with a fatal
// error.
#include <stdlib.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/diagnostics.h"
#include "io/repository/repository.h"

namespace {

namespace xRepository = xIo::xRepository;

// The container of this process, removed at its end.
class ePakFile {
public:
    ePakFile() {
        const int descriptor = ::mkstemps(path, 4);
        if (descriptor < 0) {
            std::abort();
        }
        ::close(descriptor);
    }
    ~ePakFile() { ::unlink(path); }

    void Write(const std::uint8_t* data, std::size_t size) {
        std::FILE* file = std::fopen(path, "wb");
        if (file == nullptr || std::fwrite(data, 1, size, file) != size || std::fclose(file) != 0) {
            std::abort();
        }
    }
    const char* Path() const { return path; }

private:
    char path[32] = "/tmp/zyr_fuzz_XXXXXX.pak";
};

void ReadAll(const std::string& name) {
    try {
        const auto stream = xRepository::OpenResource(name);
        while (stream->Remaining() > 0) {
            stream->ReadValue<std::uint8_t>();
        }
    } catch (const xDebug::eEx_Custom&) {
        xDebug::ClearExceptionFlag();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ePakFile file;
    const xDebug::eHandlingMode mode(xDebug::throwInstead | xDebug::noLogRecord);
    xDebug::SetLogSink([](const std::string&) {});
    file.Write(data, size);
    try {
        xRepository::Mount("/", file.Path());
    } catch (const xDebug::eEx_Custom&) {
        xDebug::ClearExceptionFlag();
    }
    for (const std::string& name : xRepository::Names()) {
        ReadAll(name);
    }
    xRepository::Clear();
    return 0;
}
