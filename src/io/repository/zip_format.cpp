#include "io/repository/zip_format.h"

#include <string_view>

namespace xIo {
namespace {

constexpr char kLocalTag[] = "PK\3\4";
constexpr char kCentralTag[] = "PK\1\2";
constexpr char kEndTag[] = "PK\5\6";

constexpr std::uint16_t kVersion = 20;       // deflate, and folders in names
constexpr std::uint16_t kTime = 0;           // midnight
constexpr std::uint16_t kDate = 1 << 5 | 1;  // of 1 January 1980
constexpr std::uint16_t kNone16 = 0;
constexpr std::uint32_t kNone32 = 0;

void WriteTag(eStream& stream, const char (&tag)[5]) {
    stream.Write(tag, 4);
}

// Offset  Size  What, in both headers
//      0     2  version needed
//      2     2  flags
//      4     2  method
//      6     2  time
//      8     2  date
//     10     4  checksum
//     14     4  compressed size
//     18     4  size
//     22     2  length of the name
//     24     2  length of the extra bytes
void WriteCommonFields(eStream& stream, const eZipHeader& header) {
    stream.WriteValue(kVersion);
    stream.WriteValue(header.flags);
    stream.WriteValue(header.method);
    stream.WriteValue(kTime);
    stream.WriteValue(kDate);
    stream.WriteValue(header.crc);
    stream.WriteValue(header.compressedSize);
    stream.WriteValue(header.size);
    stream.WriteValue(header.nameLength);
    stream.WriteValue(header.extraLength);
}

void ReadCommonFields(eByteReader& reader, eZipHeader& header) {
    reader.Value<std::uint16_t>();
    header.flags = reader.Value<std::uint16_t>();
    header.method = reader.Value<std::uint16_t>();
    reader.Value<std::uint32_t>();
    header.crc = reader.Value<std::uint32_t>();
    header.compressedSize = reader.Value<std::uint32_t>();
    header.size = reader.Value<std::uint32_t>();
    header.nameLength = reader.Value<std::uint16_t>();
    header.extraLength = reader.Value<std::uint16_t>();
}

}  // namespace

// Offset  Size  What
//      0     4  "PK\3\4"
//      4    26  common fields
void WriteLocalHeader(eStream& stream, const eZipHeader& header) {
    WriteTag(stream, kLocalTag);
    WriteCommonFields(stream, header);
}

// Offset  Size  What
//      0     4  "PK\1\2"
//      4     2  version of the writer
//      6    26  common fields
//     32     2  length of the comment
//     34     2  disk
//     36     2  attributes inside the container
//     38     4  attributes on disk
//     42     4  position of the local header
void WriteCentralHeader(eStream& stream, const eZipHeader& header) {
    WriteTag(stream, kCentralTag);
    stream.WriteValue(kVersion);
    WriteCommonFields(stream, header);
    stream.WriteValue(header.commentLength);
    stream.WriteValue(kNone16);
    stream.WriteValue(kNone16);
    stream.WriteValue(kNone32);
    stream.WriteValue(header.localPosition);
}

eZipHeader ReadCentralHeader(eByteReader& reader) {
    eZipHeader header;
    reader.Tag(kCentralTag);
    reader.Value<std::uint16_t>();
    ReadCommonFields(reader, header);
    header.commentLength = reader.Value<std::uint16_t>();
    reader.Value<std::uint16_t>();
    reader.Value<std::uint16_t>();
    reader.Value<std::uint32_t>();
    header.localPosition = reader.Value<std::uint32_t>();
    return header;
}

// Offset  Size  What
//      0     4  "PK\5\6"
//      4     2  number of this disk
//      6     2  disk on which the directory begins
//      8     2  entries on this disk
//     10     2  entries
//     12     4  size of the directory
//     16     4  position of the directory
//     20     2  length of the comment
void WriteEndRecord(eStream& stream, const eZipEnd& end) {
    WriteTag(stream, kEndTag);
    stream.WriteValue(kNone16);
    stream.WriteValue(kNone16);
    stream.WriteValue(end.entryCount);
    stream.WriteValue(end.entryCount);
    stream.WriteValue(end.directorySize);
    stream.WriteValue(end.directoryPosition);
    stream.WriteValue(kNone16);
}

eZipEnd ReadEndRecord(eByteReader& reader) {
    eZipEnd end;
    reader.Tag(kEndTag);
    reader.Value<std::uint16_t>();
    reader.Value<std::uint16_t>();
    reader.Value<std::uint16_t>();
    end.entryCount = reader.Value<std::uint16_t>();
    end.directorySize = reader.Value<std::uint32_t>();
    end.directoryPosition = reader.Value<std::uint32_t>();
    reader.Value<std::uint16_t>();
    return end;
}

std::optional<std::size_t> FindEndRecord(std::span<const std::uint8_t> tail) {
    const std::string_view bytes(reinterpret_cast<const char*>(tail.data()), tail.size());
    const std::size_t at = bytes.rfind(std::string_view(kEndTag, 4));
    return at == std::string_view::npos ? std::nullopt : std::optional(at);
}

}  // namespace xIo
