#include "standalone/pictures/image_store.h"

#include <algorithm>

#include "platform/folder.h"
#include "standalone/data/file_content.h"
#include "standalone/pictures/picture_problem.h"

namespace standalone {

namespace {

eDecodedImage ReadImage(const eImageFile& file, const std::string& diskPath) {
    if (platform::IsFolder(file.path, file.form)) {
        return {nullptr, FolderForPicture()};
    }
    std::string content;
    if (!ReadFileContent(diskPath, content).IsOk()) {
        return {nullptr, LockedPicture()};
    }
    return DecodeImage({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
}

}  // namespace

bool IsFile(const eImageFile& file) {
    return platform::Exists(file.path, file.form) && !platform::IsFolder(file.path, file.form);
}

const eImage* eImageStore::Find(const eImageFile& file, eBilingual* problem) {
    const std::string diskPath = platform::DiskPath(file.path, file.form);
    const auto found = std::ranges::find(entries, diskPath, &eEntry::diskPath);
    if (found != entries.end()) {
        entries.splice(entries.begin(), entries, found);
    } else {
        entries.push_front({diskPath, ReadImage(file, diskPath)});
        MakeRoom();
    }
    const eDecodedImage& decoded = entries.front().decoded;
    if (problem != nullptr && decoded.image == nullptr) {
        *problem = decoded.problem;
    }
    return decoded.image.get();
}

void eImageStore::TakeFrom(eImageStore& other) {
    entries.splice(entries.end(), other.entries);
    ++other.generation;
}

void eImageStore::MakeRoom() {
    constexpr std::size_t kBudget = std::size_t{128} << 20;
    constexpr std::size_t kKept = 8;
    std::size_t bytes = 0;
    std::size_t pictures = 0;
    for (auto entry = entries.begin(); entry != entries.end();) {
        const bool isPicture = entry->decoded.image != nullptr;
        bytes += isPicture ? entry->decoded.image->Bytes() : 0;
        pictures += isPicture ? 1 : 0;
        if (isPicture && pictures > kKept && bytes > kBudget) {
            entry = entries.erase(entry);
            ++generation;
        } else {
            ++entry;
        }
    }
}

namespace {

// What a caller holds of a picture in the store.
class eLoadedBitmap : public host::Bitmap {
public:
    eLoadedBitmap(eImageStore& ownStore, const std::string& pictureFile, const eImage& image)
        : store(ownStore),
          diskPath(pictureFile),
          width(image.Width()),
          height(image.Height()),
          hasAlpha(image.HasAlpha()) {}

    int Width() const override { return width; }
    int Height() const override { return height; }
    bool HasAlpha() const override { return hasAlpha; }
    void DeleteThis() override {
        store.Release(diskPath);
        delete this;
    }

private:
    eImageStore& store;
    std::string diskPath;
    int width;
    int height;
    bool hasAlpha;
};

}  // namespace

host::Bitmap* eImageStore::Load(const host::BitmapInfo& info, eBilingual* problem) {
    const eImage* image = Find({info.path}, problem);
    return image != nullptr ? new eLoadedBitmap(*this, entries.front().diskPath, *image) : nullptr;
}

void eImageStore::Release(const std::string& diskPath) {
    const auto dropped = entries.remove_if([&](const eEntry& entry) { return entry.diskPath == diskPath; });
    generation += dropped != 0 ? 1 : 0;
}

}  // namespace standalone
