#include "io/repository/pak_writer.h"

#include <zlib.h>

#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "base/ansi.h"
#include "io/name.h"
#include "io/path.h"
#include "io/repository/folder_walk.h"
#include "io/repository/part_name.h"
#include "io/repository/zip_format.h"
#include "io/streams/stream_file.h"
#include "io/streams/stream_memory.h"
#include "messages/io_reason.h"
#include "messages/utf8_words.h"
#include "platform/folder.h"

namespace xIo {
namespace {

using eBytes = std::vector<std::uint8_t>;

// What the reader's streams can hold.
constexpr std::int64_t kLargestContainer = std::numeric_limits<std::int32_t>::max() - 0x20000;
constexpr std::size_t kMostEntries = 0xFFFE;
constexpr std::size_t kLongestName = 0xFFFF;

platform::eIoStatus ReadFile(const std::string& path, eBytes& content) {
    eFileStream stream;
    if (stream.Open(path, streamRead)) {
        content.resize(static_cast<std::size_t>(stream.Size()));
        stream.Read(content.data(), stream.Size());
    }
    return stream.Status();
}

// The raw deflate stream of the content; nothing if it is not shorter.
bool Deflate(const eBytes& content, eBytes& packed) {
    constexpr int kMemoryLevel = 8;
    z_stream stream = {};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, kMemoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        return false;
    }
    packed.resize(content.size());
    stream.next_in = const_cast<Bytef*>(content.data());
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = packed.data();
    stream.avail_out = static_cast<uInt>(packed.size());
    const bool isShorter = deflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_out > 0;
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);
    return isShorter;
}

class ePakWriter {
public:
    explicit ePakWriter(eStream& target) : stream(target) {}

    // The problem, empty if there is none.
    eBilingual Add(const std::string& name, const std::string& path) {
        if (const platform::eIoStatus status = ReadFile(path, content); !status.IsOk()) {
            return ReasonWords(status).At(ToUtf8(path));
        }
        const bool isDeflated = Deflate(content, packed);
        const eBytes& bytes = isDeflated ? packed : content;
        const eZipHeader header = HeaderOf(name, bytes.size(), isDeflated);
        const std::int64_t needed = zipLocalHeaderSize + zipCentralHeaderSize +
                                    2 * std::int64_t{header.nameLength} + header.compressedSize;
        if (stream.Position() + directory.Size() + needed + zipEndRecordSize > kLargestContainer) {
            return Utf8Words(ePhrase::PackTooLarge);
        }
        WriteLocalHeader(stream, header);
        stream.Write(name.data(), header.nameLength);
        stream.Write(bytes.data(), static_cast<int>(bytes.size()));
        WriteCentralHeader(directory, header);
        directory.Write(name.data(), header.nameLength);
        ++entryCount;
        return {};
    }

    void Finish() {
        eZipEnd end;
        end.entryCount = entryCount;
        end.directorySize = static_cast<std::uint32_t>(directory.Size());
        end.directoryPosition = static_cast<std::uint32_t>(stream.Position());
        directory.Seek(0, fromStart);
        stream.WriteFrom(directory, -1);
        WriteEndRecord(stream, end);
    }

    std::int64_t ContentSize() const { return static_cast<std::int64_t>(content.size()); }

private:
    eZipHeader HeaderOf(const std::string& name, std::size_t packedSize, bool isDeflated) const {
        eZipHeader header;
        header.method = isDeflated ? zipDeflated : zipStored;
        header.crc =
            static_cast<std::uint32_t>(crc32_z(crc32_z(0, nullptr, 0), content.data(), content.size()));
        header.compressedSize = static_cast<std::uint32_t>(packedSize);
        header.size = static_cast<std::uint32_t>(content.size());
        header.nameLength = static_cast<std::uint16_t>(name.size());
        header.localPosition = static_cast<std::uint32_t>(stream.Position());
        return header;
    }

    eStream& stream;
    eMemoryStream directory;
    eBytes content;
    eBytes packed;
    std::uint16_t entryCount = 0;
};

// Names in the container and where the files lie.
using eFileTable = std::map<std::string, std::string, eMountOrder>;

// The problem, empty if there is none.
eBilingual FindFiles(const std::string& folder, const std::string& target, eFileTable& files) {
    if (!platform::IsFolder(folder)) {
        return Utf8Words(ePhrase::PathNoFolder, ToUtf8(folder));
    }
    const std::string own = platform::DiskPath(target, platform::ePathForm::Native);
    const std::string walk = WalkFolder("", folder, {}, [&](const eWalkedFile& file) {
        const std::string place = platform::DiskPath(file.path);
        if (place != own && place != own + temporarySuffix) {
            files.emplace(file.name.substr(1), file.path);
        }
    });
    eBilingual problem{ToUtf8(walk), ToUtf8(walk)};
    if (problem.IsEmpty() && files.size() > kMostEntries) {
        problem = Utf8Words(ePhrase::PackTooMany, files.size());
    }
    for (const auto& [name, path] : files) {
        if (name.size() > kLongestName || name.find(':') != std::string::npos) {
            problem += Utf8Words(ePhrase::PackBadName, ToUtf8(path));
        }
    }
    return problem;
}

// Adds the files one by one; the problem, empty if there is none.
eBilingual AddFiles(ePakWriter& writer, const eFileTable& files, ePackedFolder& result) {
    for (const auto& [name, path] : files) {
        if (const eBilingual problem = writer.Add(name, path); !problem.IsEmpty()) {
            return problem;
        }
        ++result.files;
        result.bytes += writer.ContentSize();
    }
    return {};
}

}  // namespace

ePackedFolder WritePak(const std::string& folder, const std::string& target) {
    ePackedFolder result;
    eFileTable files;
    result.problem = FindFiles(folder, target, files);
    if (!result.problem.IsEmpty()) {
        return result;
    }
    eFileStream stream;
    if (!stream.OpenNative(target, streamWrite | streamTruncate)) {
        result.problem = ReasonWords(stream.Status()).At(target);
        return result;
    }
    ePakWriter writer(stream);
    result.problem = AddFiles(writer, files, result);
    if (!result.problem.IsEmpty()) {
        stream.Abandon();
        return result;
    }
    writer.Finish();
    result.packedBytes = stream.Size();
    if (!stream.Close()) {
        result.problem = ReasonWords(stream.Status()).At(target);
    }
    return result;
}

}  // namespace xIo
