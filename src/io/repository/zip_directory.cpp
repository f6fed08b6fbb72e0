#include "io/repository/zip_directory.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "io/name.h"

namespace xIo {
namespace {

// The most that deflate can do: a copy of 258 bytes from two bits.
constexpr std::uint64_t kMostPerByte = 1032;

std::string_view NameOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Below the folder of the container, whatever the names are joined to later.
bool IsInside(std::string_view name) {
    if (name.empty() || name.starts_with('/') || name.find('\0') != std::string_view::npos ||
        name.find(':') != std::string_view::npos) {
        return false;
    }
    for (std::size_t begin = 0; begin <= name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        const std::string_view part = name.substr(begin, end - begin);
        if (part == ".." || part == ".") {
            return false;
        }
        begin = end + 1;
    }
    return true;
}

bool CanHaveSize(const eZipHeader& header) {
    if (header.size > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) {
        return false;
    }
    return header.method == zipStored ? header.size == header.compressedSize
                                      : header.size <= header.compressedSize * kMostPerByte;
}

// What is wrong with an entry; null if nothing is.
const char* ProblemOf(const eZipHeader& header, std::string_view name, const eZipEnd& end) {
    const std::uint64_t contentEnd =
        std::uint64_t{header.localPosition} + zipLocalHeaderSize + header.nameLength + header.compressedSize;
    if (!IsInside(name)) {
        return "has a name that leads out of the container";
    }
    if (header.method != zipStored && header.method != zipDeflated) {
        return "is compressed by an unknown method";
    }
    if ((header.flags & zipEncrypted) != 0) {
        return "is encrypted";
    }
    if (!CanHaveSize(header)) {
        return "has a size that its bytes can't have";
    }
    return contentEnd > end.directoryPosition ? "lies beyond the container's content" : nullptr;
}

}  // namespace

std::vector<eZipEntry> ReadZipDirectory(std::span<const std::uint8_t> directory, const eZipEnd& end,
                                        std::string& problem) {
    std::vector<eZipEntry> entries;
    eByteReader reader(directory);
    std::uint32_t index = 0;
    for (; !reader.AtEnd(); ++index) {
        const auto position = static_cast<std::uint32_t>(reader.Position());
        const eZipHeader header = ReadCentralHeader(reader);
        eName name(NameOf(reader.Bytes(header.nameLength)));
        reader.Bytes(header.extraLength);
        reader.Bytes(header.commentLength);
        if (reader.Failed()) {
            break;
        }
        if (const char* wrong = ProblemOf(header, name.Text(), end)) {
            reader.Fail("the entry " + name.Text() + " " + wrong + ", header");
        } else if (!name.Text().ends_with('/')) {
            entries.push_back({name.Text(), static_cast<std::int32_t>(header.size),
                               end.directoryPosition + position, index});
        }
    }
    if (!reader.Failed() && index != end.entryCount) {
        reader.Fail("the directory has another number of entries than the end record says");
    }
    problem = reader.Problem();
    return reader.Failed() ? std::vector<eZipEntry>() : entries;
}

}  // namespace xIo
