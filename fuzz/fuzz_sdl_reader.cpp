// The reader of SDL text on any bytes, which can include themselves: it must end, within its memory, with all
// tokens or with a fatal error.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "base/diagnostics.h"
#include "io/repository/repository.h"
#include "io/sdl/sdl_reader.h"
#include "io/streams/stream_memory.h"

namespace {

namespace xRepository = xIo::xRepository;

class eTextStorage : public xRepository::eStorage {
public:
    explicit eTextStorage(std::string content) : text(std::move(content)) {}

    std::unique_ptr<xIo::eStream> Open(std::uint32_t) override {
        auto stream = std::make_unique<xIo::eMemoryStream>();
        stream->Write(text.data(), static_cast<int>(text.size()));
        stream->Seek(0, xIo::fromStart);
        return stream;
    }

private:
    std::string text;
};

// Some blocks are skipped, the others read token by token.
void ReadTokens(xIo::xSdl::eReader& reader) {
    for (int block = 0; reader.Next().type != xIo::xSdl::kTokenEnd;) {
        if (reader.PeekIs(xIo::xSdl::kTokenBlockBegin) && ++block % 5 == 0) {
            reader.BlockBegin();
            reader.SkipBlock();
        }
    }
}

template <class Action>
void RunToItsEnd(Action action) {
    try {
        action();
    } catch (const xDebug::eEx_Custom&) {
        xDebug::ClearExceptionFlag();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead | xDebug::noLogRecord);
    xDebug::SetLogSink([](const std::string&) {});
    xIo::xSdl::eReader::LoadingMods().names = {"mod"};
    const std::string text(reinterpret_cast<const char*>(data), size);
    xRepository::Register(std::make_unique<eTextStorage>(text), "/a/b.inc");
    RunToItsEnd([] {
        xIo::xSdl::eReader reader;
        reader.OpenTokens("/a/b.inc");
        ReadTokens(reader);
    });
    RunToItsEnd([] {
        xIo::xSdl::eReader reader;
        reader.Open("/a/b.inc");
        reader.Ident();
    });
    return 0;
}
