// Why a picture file can't be used: what is wrong and what the artist can do about it.
#pragma once

#include <cstdint>

#include "messages/phrase.h"

namespace standalone {

// The kinds of files that this build reads, as the help and the messages name them.
extern const char* const kPictureFormats;

inline eBilingual UnknownPicture() {
    return Words(ePhrase::PictureUnknown, kPictureFormats);
}

inline eBilingual CutOffPicture() {
    return Words(ePhrase::PictureCutOff);
}

// Broken, or of a kind within its format that isn't read.
inline eBilingual UnreadablePicture() {
    return Words(ePhrase::PictureUnreadable);
}

inline eBilingual EmptyPicture() {
    return Words(ePhrase::PictureEmpty);
}

inline eBilingual FolderForPicture() {
    return Words(ePhrase::PictureIsFolder);
}

inline eBilingual LockedPicture() {
    return Words(ePhrase::PictureLocked);
}

inline eBilingual PictureWithoutReader() {
    return Words(ePhrase::PictureWithoutReader);
}

// What speaks against the size that a header promises; empty for a size to be trusted. `mostTexels`: as many
// as a file of that length could hold at best.
inline eBilingual SizeProblem(std::uint64_t width, std::uint64_t height, std::uint64_t mostTexels) {
    constexpr std::uint64_t kMostTexels = 1U << 28;
    if (width == 0 || height == 0) {
        return EmptyPicture();
    }
    if (width > kMostTexels / height) {
        return Words(ePhrase::PictureTooLarge, width, height);
    }
    if (width * height > mostTexels) {
        return Words(ePhrase::PictureFalseHeader, width, height);
    }
    return {};
}

}  // namespace standalone
