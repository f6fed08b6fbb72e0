#include "platform/same_file.h"

#include <algorithm>
#include <vector>

#include "platform/file_layer.h"

namespace platform {
namespace {

constexpr std::size_t kPieceSize = 0x10000;

bool OpenWithLength(const std::string& native, std::int64_t length, eFile& file) {
    std::int64_t found = 0;
    return Files().LeavesSame() && file.Open(native, eFileAccess::Read, ePathForm::Native).IsOk() &&
           file.Length(found).IsOk() && found == length;
}

// True if the file goes on with the piece, which is at most kPieceSize long.
bool GoesOnWith(eFile& file, std::span<const std::uint8_t> piece, std::vector<std::uint8_t>& buffer) {
    buffer.resize(piece.size());
    std::size_t got = 0;
    return file.Read(buffer.data(), buffer.size(), got).IsOk() && got == piece.size() &&
           std::ranges::equal(buffer, piece);
}

}  // namespace

bool HoldsAlready(const std::string& native, std::span<const std::uint8_t> content) {
    eFile file;
    if (!OpenWithLength(native, static_cast<std::int64_t>(content.size()), file)) {
        return false;
    }
    std::vector<std::uint8_t> buffer;
    while (!content.empty()) {
        const auto piece = content.first(std::min(content.size(), kPieceSize));
        if (!GoesOnWith(file, piece, buffer)) {
            return false;
        }
        content = content.subspan(piece.size());
    }
    return true;
}

bool HoldsAlready(const std::string& native, eFile& content) {
    eFile file;
    std::int64_t left = 0;
    if (!content.Length(left).IsOk() || !OpenWithLength(native, left, file) || !content.Seek(0).IsOk()) {
        return false;
    }
    std::vector<std::uint8_t> piece(std::min(static_cast<std::size_t>(left), kPieceSize));
    std::vector<std::uint8_t> buffer;
    while (left > 0) {
        std::size_t got = 0;
        if (!content.Read(piece.data(), piece.size(), got).IsOk() || got == 0 ||
            !GoesOnWith(file, {piece.data(), got}, buffer)) {
            return false;
        }
        left -= static_cast<std::int64_t>(got);
    }
    return true;
}

}  // namespace platform
