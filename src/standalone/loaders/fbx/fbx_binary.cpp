#include "standalone/loaders/fbx/fbx_binary.h"

#include <bit>
#include <cstring>

#include "standalone/loaders/fbx/fbx_arrays.h"

namespace standalone {
namespace {

constexpr std::uint32_t kFirstWideVersion = 7500;

class eBinaryReader {
public:
    explicit eBinaryReader(std::string_view content) : bytes(content), offset(kFbxMagic.size()) {}

    std::optional<eFbxRecord> Read() {
        const auto version = Number<std::uint32_t>();
        isWide = version >= kFirstWideVersion;
        eFbxRecord root;
        ReadList(root, bytes.size(), 0);
        return isGood ? std::optional(std::move(root)) : std::nullopt;
    }

private:
    template <class Type>
    Type Number() {
        Type number{};
        const std::string_view taken = Take(sizeof number);
        if (isGood) {
            std::memcpy(&number, taken.data(), sizeof number);
        }
        return number;
    }

    std::uint64_t Size() { return isWide ? Number<std::uint64_t>() : Number<std::uint32_t>(); }

    std::string_view Take(std::uint64_t count) {
        if (!isGood || count > bytes.size() - offset) {
            isGood = false;
            return {};
        }
        const std::string_view taken = bytes.substr(offset, count);
        offset += count;
        return taken;
    }

    // The records up to the end of the list, or up to the offset where it must end.
    void ReadList(eFbxRecord& parent, std::size_t end, int level) {
        isGood = isGood && level < kMostFbxLevels;
        while (isGood && offset < end) {
            const std::size_t start = offset;
            const std::uint64_t recordEnd = Size();
            const std::uint64_t valueCount = Size();
            const std::uint64_t valueLength = Size();
            const std::string_view name = Take(Number<std::uint8_t>());
            if (!isGood || recordEnd == 0) {
                return;
            }
            isGood = recordEnd > start && recordEnd <= end && valueLength <= recordEnd - offset;
            if (isGood) {
                eFbxRecord& record = parent.children.emplace_back();
                record.name = name;
                ReadRecord(record, valueCount, offset + valueLength, recordEnd, level);
            }
        }
    }

    void ReadRecord(eFbxRecord& record, std::uint64_t valueCount, std::size_t valueEnd, std::size_t end,
                    int level) {
        for (std::uint64_t value = 0; value < valueCount && isGood; ++value) {
            ReadValue(record);
        }
        isGood = isGood && offset == valueEnd;
        ReadList(record, end, level + 1);
        isGood = isGood && offset <= end;
        offset = end;
    }

    void ReadValue(eFbxRecord& record) {
        switch (Number<char>()) {
            case 'C':
            case 'B':
                record.values.emplace_back(std::int64_t{Number<std::uint8_t>()});
                return;
            case 'Y':
                record.values.emplace_back(std::int64_t{Number<std::int16_t>()});
                return;
            case 'I':
                record.values.emplace_back(std::int64_t{Number<std::int32_t>()});
                return;
            case 'L':
                record.values.emplace_back(Number<std::int64_t>());
                return;
            case 'F':
                record.values.emplace_back(double{Number<float>()});
                return;
            case 'D':
                record.values.emplace_back(Number<double>());
                return;
            case 'S':
                record.values.emplace_back(Take(Number<std::uint32_t>()));
                return;
            case 'R':
                Take(Number<std::uint32_t>());
                record.values.emplace_back(std::int64_t{0});
                return;
            default:
                ReadArray(record);
        }
    }

    // Count, encoding and length of the stored bytes; the letter of the elements has been read.
    void ReadArray(eFbxRecord& record) {
        eFbxArray array;
        array.letter = isGood ? bytes[offset - 1] : '\0';
        array.count = Number<std::uint32_t>();
        array.isPacked = Number<std::uint32_t>() != 0;
        const std::uint64_t packedLength = Number<std::uint32_t>();
        const std::uint64_t width = FbxElementWidth(array.letter);
        isGood = isGood && width != 0;
        array.stored = Take(array.isPacked ? packedLength : array.count * width);
        record.values.emplace_back(array);
    }

    std::string_view bytes;
    std::size_t offset;
    bool isWide = false;
    bool isGood = true;
};

static_assert(std::endian::native == std::endian::little, "numbers are taken as they stand in the file");

}  // namespace

std::optional<eFbxRecord> ReadBinaryFbx(std::string_view bytes) {
    return eBinaryReader(bytes).Read();
}

}  // namespace standalone
