#pragma once

#include <list>
#include <memory>
#include <string>

#include "host/bitmap.h"
#include "platform/path_lookup.h"
#include "standalone/pictures/image.h"

namespace standalone {

// A picture file: a path of the scene, or one as the operating system spells it.
struct eImageFile {
    std::string path;
    platform::ePathForm form = platform::ePathForm::Resource;
};

// True if the path leads to something that can be opened as a file.
bool IsFile(const eImageFile& file);

// The pictures of the scene, decoded when first asked for. Those that have not been asked for long make room
// for others; the latest few stay whatever their size, so that maps which mix several pictures do not decode
// them texel by texel. A loaded picture that is released goes at once: the next takes its place in memory.
class eImageStore : public host::BitmapManager {
public:
    // Null if the file can't be read as a picture; `problem`, if given, then says why. The
    // picture stays valid while Generation stays the same.
    const eImage* Find(const eImageFile& file, eBilingual* problem = nullptr);
    // What the other store has decoded goes over to this one; that one decodes it anew if it is asked again.
    void TakeFrom(eImageStore& other);
    // Rises when a picture is given up.
    unsigned Generation() const { return generation; }

    host::Bitmap* Load(const host::BitmapInfo& info, eBilingual* problem) override;
    void Release(const std::string& diskPath);

private:
    struct eEntry {
        std::string diskPath;  // UTF-8
        eDecodedImage decoded;
    };

    void MakeRoom();

    std::list<eEntry> entries;  // the latest first
    unsigned generation = 0;
};

}  // namespace standalone
