#include "io/repository/stream_zip.h"

#include <cstdlib>

#include "base/diagnostics.h"
#include "base/format.h"

namespace xIo {
namespace {

// As reports name this source, wherever it lies.
constexpr const char* kSource = "io/stream_zip";

}  // namespace

eZipStream::eZipStream(int contentSize) {
    flags = streamRead;
    size = contentSize;
    if (contentSize > 0) {
        bufferBegin = static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(contentSize), 1));
        if (bufferBegin == nullptr) {
            size = 0;
            Fail(kSource, __LINE__, "out of memory for an entry of a container");
        }
    }
    cursor = bufferBegin;
    bufferEnd = bufferBegin + size;
}

namespace xRepository {

// The reason stands in the report behind the message, as the place where the work stopped.
void eZipContainer::FailToOpen(const std::string& reason) const {
    const xDebug::xCheckPoint::eScope place(reason);
    Fail(kSource, __LINE__, (format("%1%: can't open .pak") % path).Text());
}

std::unique_ptr<eZipStream> eZipContainer::Inflate(const eZipEntry& entry, const std::string& description) {
    auto stream = std::make_unique<eZipStream>(entry.size);
    if (!InflateInto(entry, *stream)) {
        Fail(kSource, __LINE__, (format("%1%: the entry is damaged") % description).Text());
    }
    return stream;
}

}  // namespace xRepository
}  // namespace xIo
