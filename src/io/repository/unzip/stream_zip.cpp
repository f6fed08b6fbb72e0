#include "io/repository/stream_zip.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <limits>

namespace xIo::xRepository {
namespace {

constexpr int kContainerBuffer = 0x20000;
// The longest comment may stand behind the end record.
constexpr int kLongestTail = zipEndRecordSize + 0xFFFF;

}  // namespace

// How the unzip reaches the container's streams. Nothing here may throw: the callers are C.
struct eZipContainer::eFileFunctions {
    static eZipContainer& Of(voidpf opaque) { return *static_cast<eZipContainer*>(opaque); }

    static voidpf Open(voidpf opaque, const char*, int) { return opaque; }

    static uLong Read(voidpf opaque, voidpf, void* buffer, uLong count) {
        eZipContainer& container = Of(opaque);
        eStream& stream = *container.current;
        const auto left = static_cast<uLong>(std::max(stream.Remaining(), 0));
        const uLong got = std::min(count, left);
        stream.Read(buffer, static_cast<int>(got));
        return container.fileStream.Status().IsOk() ? got : 0;
    }

    static uLong Write(voidpf, voidpf, const void*, uLong) { return 0; }

    static long Tell(voidpf opaque, voidpf) { return static_cast<long>(Of(opaque).Tell()); }

    static long Seek(voidpf opaque, voidpf, uLong offset, int origin) {
        eZipContainer& container = Of(opaque);
        const std::int64_t base = origin == ZLIB_FILEFUNC_SEEK_SET   ? 0
                                  : origin == ZLIB_FILEFUNC_SEEK_CUR ? container.Tell()
                                                                     : container.fileStream.Size();
        return container.Seek(base + static_cast<std::int64_t>(offset)) ? 0 : -1;
    }

    static int Close(voidpf, voidpf) { return 0; }
    static int Error(voidpf, voidpf) { return 0; }
};

eZipContainer::eZipContainer(const std::string& containerPath) : path(containerPath) {
    if (!fileStream.Open(path, streamRead, kContainerBuffer)) {
        FailToOpen(fileStream.Status().Text());
    }
    if (fileStream.Size() > std::numeric_limits<std::int32_t>::max() - kContainerBuffer) {
        FailToOpen("it holds 2 GiB");
    }
    const eZipEnd end = ReadEnd();
    ReadDirectory(end);
    std::string problem;
    entries = ReadZipDirectory(directory.Content(), end, problem);
    if (!problem.empty()) {
        FailToOpen(problem);
    }
    OpenUnzip();
}

eZipContainer::~eZipContainer() {
    unzClose(unzip);
}

// Bytes in front of the first entry, as a self-extracting program has them, are allowed; the positions in the
// directory count from behind them.
eZipEnd eZipContainer::ReadEnd() {
    const int tailLength = std::min(fileStream.Size(), kLongestTail);
    std::vector<std::uint8_t> tail(static_cast<std::size_t>(tailLength));
    fileStream.Seek(fileStream.Size() - tailLength, fromStart);
    fileStream.Read(tail.data(), tailLength);
    const std::optional<std::size_t> at = FindEndRecord(tail);
    if (!at) {
        FailToOpen("there is no end record");
    }
    const std::span<const std::uint8_t> record(tail.begin() + static_cast<std::ptrdiff_t>(*at), tail.end());
    eByteReader reader(record);
    const eZipEnd end = ReadEndRecord(reader);
    if (reader.Failed()) {
        FailToOpen(reader.Problem());
    }
    const std::int64_t position = fileStream.Size() - tailLength + static_cast<std::int64_t>(*at);
    if (std::int64_t{end.directoryPosition} + end.directorySize > position) {
        FailToOpen("the directory lies beyond the end record");
    }
    directoryEnd = static_cast<std::int32_t>(position);
    directoryStart = static_cast<std::int32_t>(position - end.directorySize);
    return end;
}

void eZipContainer::ReadDirectory(const eZipEnd& end) {
    fileStream.Seek(directoryStart, fromStart);
    directory.WriteFrom(fileStream, static_cast<int>(end.directorySize));
    if (!fileStream.Status().IsOk()) {
        FailToOpen(fileStream.Status().Text());
    }
}

// The unzip looks for the end record in the file itself, so the directory takes part only after that.
void eZipContainer::OpenUnzip() {
    const std::int32_t start = std::exchange(directoryStart, -1);
    zlib_filefunc_def functions = {};
    functions.zopen_file = eFileFunctions::Open;
    functions.zread_file = eFileFunctions::Read;
    functions.zwrite_file = eFileFunctions::Write;
    functions.ztell_file = eFileFunctions::Tell;
    functions.zseek_file = eFileFunctions::Seek;
    functions.zclose_file = eFileFunctions::Close;
    functions.zerror_file = eFileFunctions::Error;
    functions.opaque = this;
    unzip = unzOpen2(path.c_str(), &functions);
    if (unzip == nullptr) {
        FailToOpen("it is damaged");
    }
    directoryStart = start;
}

bool eZipContainer::Seek(std::int64_t target) {
    if (target < 0 || target > fileStream.Size()) {
        return false;
    }
    const bool isDirectory = directoryStart >= 0 && target >= directoryStart && target <= directoryEnd;
    current = isDirectory ? static_cast<eStream*>(&directory) : &fileStream;
    current->Seek(static_cast<int>(target) - (isDirectory ? directoryStart : 0), fromStart);
    return true;
}

std::int64_t eZipContainer::Tell() const {
    return current->Position() + (current == &directory ? directoryStart : 0);
}

bool eZipContainer::InflateInto(const eZipEntry& entry, eZipStream& stream) {
    unz_file_pos position = {entry.position, entry.index};
    if (unzGoToFilePos(unzip, &position) != UNZ_OK || unzOpenCurrentFile(unzip) != UNZ_OK) {
        return false;
    }
    unz_file_info info = {};
    unzGetCurrentFileInfo(unzip, &info, nullptr, 0, nullptr, 0, nullptr, 0);
    const int got = unzReadCurrentFile(unzip, stream.Data(), static_cast<unsigned>(entry.size));
    // Compares the checksum.
    const bool isSound = unzCloseCurrentFile(unzip) == UNZ_OK;
    return isSound && got == entry.size && info.uncompressed_size == static_cast<uLong>(entry.size);
}

}  // namespace xIo::xRepository
