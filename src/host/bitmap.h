#pragma once

#include <memory>
#include <string>

#include "base/bilingual.h"

namespace host {

// Which picture to load.
struct BitmapInfo {
    std::string path;  // code page 1251
};

// A loaded picture. DeleteThis releases it: the host need not keep its pixels any longer.
class Bitmap {
public:
    virtual int Width() const = 0;
    virtual int Height() const = 0;
    virtual bool HasAlpha() const = 0;
    virtual void DeleteThis() = 0;

protected:
    virtual ~Bitmap() = default;
};

struct BitmapRelease {
    void operator()(Bitmap* bitmap) const { bitmap->DeleteThis(); }
};
using BitmapHold = std::unique_ptr<Bitmap, BitmapRelease>;

class BitmapManager {
public:
    virtual ~BitmapManager() = default;
    // Null if the file can't be read as a picture; `problem`, if given, then says why.
    virtual Bitmap* Load(const BitmapInfo& info, eBilingual* problem) = 0;
};

}  // namespace host
