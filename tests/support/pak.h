#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "io/repository/zip_format.h"
#include "io/streams/stream_memory.h"

namespace support {

// A container put together header by header, so that each of them can lie.
class ePakBuilder {
public:
    // Stored content under the name; `change` may alter what the headers say.
    template <class Change>
    ePakBuilder& Add(const std::string& name, const std::string& content, Change change) {
        xIo::eZipHeader header;
        header.method = xIo::zipStored;
        header.compressedSize = header.size = static_cast<std::uint32_t>(content.size());
        header.nameLength = static_cast<std::uint16_t>(name.size());
        header.localPosition = static_cast<std::uint32_t>(file.Position());
        header.crc = Checksum(content);
        change(header);
        xIo::WriteLocalHeader(file, header);
        Write(file, name);
        Write(file, content);
        xIo::WriteCentralHeader(directory, header);
        Write(directory, name);
        ++end.entryCount;
        return *this;
    }
    ePakBuilder& Add(const std::string& name, const std::string& content) {
        return Add(name, content, [](xIo::eZipHeader&) {});
    }

    template <class Change>
    std::string Bytes(Change change) {
        end.directoryPosition = static_cast<std::uint32_t>(file.Position());
        end.directorySize = static_cast<std::uint32_t>(directory.Size());
        change(end);
        directory.Seek(0, xIo::fromStart);
        file.WriteFrom(directory, -1);
        xIo::WriteEndRecord(file, end);
        const auto content = file.Content();
        return {content.begin(), content.end()};
    }
    std::string Bytes() {
        return Bytes([](xIo::eZipEnd&) {});
    }

private:
    static void Write(xIo::eStream& stream, const std::string& text) {
        stream.Write(text.data(), static_cast<int>(text.size()));
    }
    // CRC-32, bit by bit.
    static std::uint32_t Checksum(const std::string& content) {
        std::uint32_t sum = 0xFFFFFFFF;
        for (const char c : content) {
            sum ^= static_cast<std::uint8_t>(c);
            for (int bit = 0; bit < 8; ++bit) {
                sum = (sum & 1) != 0 ? sum >> 1 ^ 0xEDB88320 : sum >> 1;
            }
        }
        return ~sum;
    }

    xIo::eMemoryStream file;
    xIo::eMemoryStream directory;
    xIo::eZipEnd end;
};

}  // namespace support
