#include "verify/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/map_row.h"
#include "material/queries/shade_context.h"
#include "material/textures/bmp_file.h"
#include "texture/dds_reader.h"
#include "verify/face_surface.h"

namespace verify {

namespace {

using eTexel = std::array<std::uint8_t, 4>;  // red, green, blue, alpha

// The first file of a map, as the scene spells it; empty if there is none.
std::string FileOf(const host::Texmap& map) {
    class eFirstFile : public host::AssetEnumCallback {
    public:
        std::string path;
        void RecordAsset(const host::AssetUser& asset) override {
            path = path.empty() ? asset.GetFullFilePath() : path;
        }
    } first;
    map.EnumAuxFiles(first, 0);
    return first.path;
}

// A picture of the files, rows from the top.
std::optional<ePixelImage> Decode(const platform::eFileContent& content, bool isDds) {
    if (isDds) {
        const eDdsFile file = ReadDds(content);
        return file.levels.empty() ? std::nullopt : std::optional(DecodeDdsLevel(content, file, 0));
    }
    std::string problem;
    const std::optional<eBmpPicture> bmp = ReadBmp(content, problem);
    if (!bmp) {
        return std::nullopt;
    }
    ePixelImage image;
    image.Resize(static_cast<unsigned>(bmp->image.width), static_cast<unsigned>(bmp->image.height));
    std::uint8_t* to = image.rgba.data();
    for (int y = bmp->image.height - 1; y >= 0; --y) {
        for (int x = 0; x < bmp->image.width; ++x, to += 4) {
            const std::uint8_t* const from = bmp->image.Pixel(x, y);
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
            to[3] = from[3];
        }
    }
    return image;
}

std::uint8_t ByteOf(float value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0F, 1.0F) * 255 + 0.5F);
}

// The texels of a map as the host shows them, on a grid of the picture's size; rows from the top. Where the
// host answers by rows its word is taken as long as one texel of each row, always another one, is that of its
// single answer: what the exporter makes of rows is not to be judged by them alone.
class eShownMap {
public:
    eShownMap(host::Texmap& map, unsigned width, unsigned height, host::TimeValue time)
        : map_(map), width_(width), height_(height), toMap_(host::ExactInverse(map.GetUVTransform())) {
        context_.time = time;
        context_.ambientLight = {1, 1, 1};
        context_.duv = {0.01F, 0.01F};
        context_.filterMaps = false;
    }

    eTexel ColorAt(unsigned x, unsigned y) {
        if (byRows_ != nullptr && row_ != y) {
            TakeRow(y);
        }
        return byRows_ != nullptr ? ColorInRow(x) : SingleColorAt(x, y);
    }
    float GreyAt(unsigned x, unsigned y) {
        StandAt(x, y);
        return map_.EvalMono(context_);
    }

private:
    // In the middle of the texel.
    host::DPoint2 PlaceOf(unsigned x, unsigned y) const {
        return {(x + 0.5) / width_, 1 - (y + 0.5) / height_};
    }
    void StandAt(unsigned x, unsigned y) {
        const host::DPoint2 place = PlaceOf(x, y);
        context_.uv = place * toMap_;
        context_.boxPoint = {static_cast<float>(2 * place.x - 1), static_cast<float>(2 * place.y - 1), -1};
    }

    eTexel SingleColorAt(unsigned x, unsigned y) {
        StandAt(x, y);
        const host::AColor color = map_.EvalColor(context_);
        return {ByteOf(color.r), ByteOf(color.g), ByteOf(color.b), ByteOf(color.a)};
    }

    // A row's pixels are blue, green, red, alpha.
    eTexel ColorInRow(unsigned x) const {
        const std::uint8_t* const pixel = pixels_.data() + std::size_t{4} * x;
        return {pixel[2], pixel[1], pixel[0], pixel[3]};
    }

    void TakeRow(unsigned y) {
        constexpr unsigned kStride = 97;
        places_.resize(width_);
        pixels_.resize(std::size_t{4} * width_);
        for (unsigned x = 0; x < width_; ++x) {
            places_[x] = PlaceOf(x, y) * toMap_;
        }
        byRows_->EvalRow(places_, pixels_);
        const unsigned x = y * kStride % width_;
        byRows_ = SingleColorAt(x, y) == ColorInRow(x) ? byRows_ : nullptr;
        row_ = y;
    }

    static const eSceneLights& NoLights() {
        static const eSceneLights none;
        return none;
    }

    host::Texmap& map_;
    unsigned width_;
    unsigned height_;
    host::DMatrix3 toMap_;
    SContext context_{NoLights()};
    host::MapRow* byRows_ = dynamic_cast<host::MapRow*>(&map_);  // null: the host answers by places alone
    std::optional<unsigned> row_;                                // that the two hold
    std::vector<host::DPoint2> places_;
    std::vector<std::uint8_t> pixels_;
};

// What the engine's normal map should hold: y in green, z in blue, x in alpha.
eTexel NormalTexel(const eTexel& color) {
    return {0, static_cast<std::uint8_t>(255 - color[1]), color[2], color[0]};
}

// Normals of a field of heights, which goes on behind its edges from the opposite side.
class eHeights {
public:
    eHeights(eShownMap& map, unsigned width, unsigned height, float amount) : width_(width), height_(height) {
        for (unsigned y = 0; y < height; ++y) {
            for (unsigned x = 0; x < width; ++x) {
                heights_.push_back(ByteOf((map.GreyAt(x, y) - 0.5F) * amount + 0.5F) / 255.0);
            }
        }
    }

    // The slopes by the weights 1, 2, 1 across; y runs up the picture.
    eTexel NormalAt(unsigned x, unsigned y) const {
        const auto column = [&](int dx) { return At(x, y, dx, -1) + 2 * At(x, y, dx, 0) + At(x, y, dx, 1); };
        const auto row = [&](int dy) { return At(x, y, -1, dy) + 2 * At(x, y, 0, dy) + At(x, y, 1, dy); };
        const eVector slope{column(-1) - column(1), row(1) - row(-1), 1};
        const double length = Length(slope);
        const auto byte = [&](std::size_t i) {
            return static_cast<std::uint8_t>((slope[i] / length + 1) * 0.5 * 255);
        };
        return {0, byte(1), byte(2), byte(0)};
    }

private:
    double At(unsigned x, unsigned y, int dx, int dy) const {
        const unsigned column = (x + width_ + static_cast<unsigned>(dx)) % width_;
        const unsigned row = (y + height_ + static_cast<unsigned>(dy)) % height_;
        return heights_[std::size_t{row} * width_ + column];
    }

    unsigned width_;
    unsigned height_;
    std::vector<double> heights_;
};

// The first of the three channels that are compared: those of a colour, or of a normal.
constexpr std::size_t kColor = 0;
constexpr std::size_t kNormal = 1;

// Peak signal to noise over three channels; equal pictures have the most that is told. `wanted` gives the
// texel at a column and a row.
template <class Wanted>
double Decibels(const ePixelImage& image, std::size_t first, Wanted wanted) {
    constexpr double kEqual = 99;
    constexpr std::size_t kChannels = 3;
    std::int64_t squares = 0;
    const std::uint8_t* written = image.rgba.data() + first;
    for (unsigned y = 0; y < image.height; ++y) {
        for (unsigned x = 0; x < image.width; ++x, written += 4) {
            const eTexel texel = wanted(x, y);
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const int difference = texel[first + channel] - written[channel];
                squares += difference * difference;
            }
        }
    }
    const double mean = static_cast<double>(squares) / (double{kChannels} * image.width * image.height);
    return mean > 0 ? std::min(kEqual, 10 * std::log10(255 * 255 / mean)) : kEqual;
}

double QualityOf(const ePixelImage& image, host::Texmap& map, bool isBump, bool isSpecular, float amount,
                 host::TimeValue time) {
    if (isBump && map.ClassID() == host::kNormalBumpClass) {
        host::Texmap* const normals = map.NumSubTexmaps() > 0 ? map.GetSubTexmap(0) : nullptr;
        eShownMap shown(normals != nullptr ? *normals : map, image.width, image.height, time);
        return Decibels(image, kNormal,
                        [&](unsigned x, unsigned y) { return NormalTexel(shown.ColorAt(x, y)); });
    }
    eShownMap shown(map, image.width, image.height, time);
    if (isBump) {
        const eHeights heights(shown, image.width, image.height, amount);
        return Decibels(image, kNormal, [&](unsigned x, unsigned y) { return heights.NormalAt(x, y); });
    }
    if (isSpecular) {
        return Decibels(image, kColor, [&](unsigned x, unsigned y) {
            const std::uint8_t grey = ByteOf(shown.GreyAt(x, y) * amount);
            return eTexel{grey, grey, grey, 255};
        });
    }
    return Decibels(image, kColor, [&](unsigned x, unsigned y) { return shown.ColorAt(x, y); });
}

bool HasPicture(const host::Texmap& map) {
    return (map.ClassID() == host::kBitmapClass || map.ClassID() == host::kNormalBumpClass) &&
           !FileOf(map).empty();
}

}  // namespace

void ePictures::Compare(const eName& folder, const std::string& name, host::Mtl& leaf) {
    const auto& materials = materials_.In(folder).materials;
    const auto material = materials.find(name);
    if (material == materials.end()) {
        return;
    }
    for (const eMapUse& use : MapUsesOf(leaf)) {
        const auto picture = material->second.find(use.key);
        const eName file =
            picture != material->second.end() ? materials_.PictureFile(folder, picture->second) : eName();
        const bool isPlain = use.isBump || use.map->ClassID() == host::kBitmapClass;
        if (!file.IsEmpty() && isPlain && HasPicture(*use.map) && compared_.insert(file).second) {
            ComparePicture(file, use);
        }
    }
}

void ePictures::ComparePicture(const eName& file, const eMapUse& use) {
    const std::string source = FileOf(*use.map);
    const std::optional<platform::eFileContent> content = ReadWritten(file);
    ePictureVerdict& verdict = verdicts_.emplace_back(ePictureVerdict{.file = file});
    if (!content) {
        return verdict.findings.Add("broken picture", 0, file.Part(eName::FileName));
    }
    const std::string ending = file.Part(eName::Extension);
    if (!use.isBump && eName(source).Part(eName::Extension).Text() == ending) {
        verdict.isCopy = true;
        if (ReadWritten(source) != content) {
            verdict.findings.Add("other picture", 0, source);
        }
        return;
    }
    const std::optional<ePixelImage> image = Decode(*content, ending == ".dds");
    if (!image || image->rgba.empty()) {
        return verdict.findings.Add("broken picture", 0, file.Part(eName::FileName));
    }
    use.map->LoadMapFiles(scene_.StaticTime());
    verdict.decibels =
        QualityOf(*image, *use.map, use.isBump, use.isSpecular, use.amount, scene_.StaticTime());
    if (verdict.decibels < bounds_.decibels) {
        verdict.findings.Add("picture quality", verdict.decibels, source);
    }
}

}  // namespace verify
