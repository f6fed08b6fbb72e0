// Why a picture file can't be used: what is wrong and what the artist can do about it, in code page 1251.
#pragma once

#include <cstdint>
#include <string>

#include "base/ansi.h"
#include "base/format.h"

namespace standalone {

// The kinds of files that this build reads, as the help and the messages name them.
extern const char* const kPictureFormats;

inline std::string UnknownPicture() {
    return (format("Это не картинка известного вида. Сохраните ее в одном из видов: %1%."_ansi) %
            kPictureFormats)
        .Text();
}

inline std::string CutOffPicture() {
    return "Файл обрывается раньше, чем кончается картинка. Сохраните ее заново."_ansi;
}

// Broken, or of a kind within its format that isn't read.
inline std::string UnreadablePicture() {
    return "Файл поврежден или сохранен в разновидности, которая не читается. Сохраните картинку заново: "
           "RGB, 8 "
           "или 16 бит на канал."_ansi;
}

inline std::string EmptyPicture() {
    return "В картинке нет ни одной точки. Сохраните ее заново."_ansi;
}

inline std::string FolderForPicture() {
    return "Это папка, а не файл. Укажите в карте файл картинки."_ansi;
}

inline std::string LockedPicture() {
    return "Файл не открывается: нет прав, или он занят другой программой."_ansi;
}

inline std::string PictureWithoutReader() {
    return "Эта сборка программы не читает tif. Сохраните картинку как png или tga."_ansi;
}

// What speaks against the size that a header promises; empty for a size to be trusted. `mostTexels`: as many
// as a file of that length could hold at best.
inline std::string SizeProblem(std::uint64_t width, std::uint64_t height, std::uint64_t mostTexels) {
    constexpr std::uint64_t kMostTexels = 1U << 28;
    if (width == 0 || height == 0) {
        return EmptyPicture();
    }
    if (width > kMostTexels / height) {
        return (format("Картинка слишком велика: %1% на %2% точек. Уменьшите ее."_ansi) % width % height)
            .Text();
    }
    if (width * height > mostTexels) {
        return (format("Заголовок обещает %1% на %2% точек, больше, чем умещается в таком файле. Сохраните "
                       "картинку "
                       "заново."_ansi) %
                width % height)
            .Text();
    }
    return {};
}

}  // namespace standalone
