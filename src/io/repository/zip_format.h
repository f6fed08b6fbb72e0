// The parts of a ZIP file that a .pak consists of: for each entry a local header with its name and the bytes
// of its content, then the central directory with a central header and a name for each, then the end record.
// No parts of several disks, no 64-bit forms: a container holds less than 2 GiB and less than 65535 entries.
#pragma once

#include <cstdint>
#include <optional>

#include "io/streams/byte_reader.h"
#include "io/streams/stream.h"

namespace xIo {

inline constexpr std::uint16_t zipStored = 0;
inline constexpr std::uint16_t zipDeflated = 8;

// Flags of an entry.
inline constexpr std::uint16_t zipEncrypted = 0x0001;

inline constexpr int zipLocalHeaderSize = 30;
inline constexpr int zipCentralHeaderSize = 46;
inline constexpr int zipEndRecordSize = 22;

// What the headers of an entry say. The name follows the header, then the extra bytes and the comment, which
// mean nothing here.
struct eZipHeader {
    std::uint16_t flags = 0;
    std::uint16_t method = zipDeflated;
    std::uint32_t crc = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t size = 0;
    std::uint16_t nameLength = 0;
    std::uint16_t extraLength = 0;
    std::uint16_t commentLength = 0;
    std::uint32_t localPosition = 0;  // of the local header
};

struct eZipEnd {
    std::uint16_t entryCount = 0;
    std::uint32_t directorySize = 0;
    std::uint32_t directoryPosition = 0;
};

// Writing: one point in time for all entries, so that a container depends on its content alone.
void WriteLocalHeader(eStream& stream, const eZipHeader& header);
void WriteCentralHeader(eStream& stream, const eZipHeader& header);
void WriteEndRecord(eStream& stream, const eZipEnd& end);

// Reading leaves a failure in the reader if another tag stands there or the bytes end.
eZipHeader ReadCentralHeader(eByteReader& reader);
eZipEnd ReadEndRecord(eByteReader& reader);

// Where the end record begins: its last tag in the bytes, which are the end of a file.
std::optional<std::size_t> FindEndRecord(std::span<const std::uint8_t> tail);

}  // namespace xIo
