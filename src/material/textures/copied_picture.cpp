#include "material/textures/copied_picture.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "base/ansi.h"
#include "io/name.h"
#include "io/streams/stream_file.h"
#include "texture/dds_reader.h"

namespace {

std::string ExtensionOf(const std::string& path) {
    return eName(path).Part(eName::Extension).Text();
}

// At most `count` bytes from the start on; nothing of a file that can't be read.
std::vector<std::uint8_t> ReadStart(const std::string& path, int count) {
    xIo::eFileStream file;
    std::vector<std::uint8_t> content;
    if (file.Open(path, xIo::streamRead)) {
        content.resize(static_cast<std::size_t>(std::min(count, file.Size())));
        file.Read(content.data(), static_cast<int>(content.size()));
    }
    return content;
}

}  // namespace

std::string DamageOfCopiedPicture(const std::string& path) {
    constexpr int kWholeFile = 0x7FFFFFFF;
    if (ExtensionOf(path) != ".dds") {
        return {};
    }
    const eDdsFile file = ReadDds(ReadStart(path, kWholeFile));
    const eDdsProblem* damage = FirstDamage(file);
    return damage == nullptr ? std::string() : damage->text + ", байт "_ansi + std::to_string(damage->offset);
}

bool IsMisnamedPicture(const std::string& path) {
    const std::string extension = ExtensionOf(path);
    if (extension != ".bmp" && extension != ".tga") {
        return false;
    }
    const std::vector<std::uint8_t> start = ReadStart(path, 2);
    if (start.size() < 2) {
        return false;
    }
    // A tga has no mark of its own, but its second byte, the presence of a palette, is above 1 in the marks
    // of all other kinds.
    return extension == ".bmp" ? start[0] != 'B' || start[1] != 'M' : start[1] > 1;
}
