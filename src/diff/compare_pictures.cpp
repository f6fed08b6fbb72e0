#include "diff/compare_pictures.h"

#include <array>
#include <cmath>

#include "base/ansi.h"
#include "standalone/pictures/image.h"

namespace diff {

namespace {

using standalone::eImage;

std::string SizeText(const eImage& image) {
    return std::to_string(image.Width()) + " x " + std::to_string(image.Height());
}

double SquaresBetween(const host::AColor& a, const host::AColor& b) {
    const std::array<double, 4> differences{double{a.r} - b.r, double{a.g} - b.g, double{a.b} - b.b,
                                            double{a.a} - b.a};
    double squares = 0;
    for (const double difference : differences) {
        squares += difference * difference;
    }
    return squares;
}

// Of two pictures of one size; infinite where they are the same.
double Decibels(const eImage& before, const eImage& after) {
    double squares = 0;
    for (int y = 0; y < before.Height(); ++y) {
        for (int x = 0; x < before.Width(); ++x) {
            const double u = (x + 0.5) / before.Width();
            const double v = (y + 0.5) / before.Height();
            squares += SquaresBetween(before.Nearest(u, v), after.Nearest(u, v));
        }
    }
    const double mean = squares / (4.0 * before.Width() * before.Height());
    return -10 * std::log10(mean);
}

}  // namespace

void ComparePictures(std::span<const std::uint8_t> before, std::span<const std::uint8_t> after,
                     const eTolerances& tolerances, eChanges& changes, eBilingual& problem) {
    const standalone::eDecodedImage old = standalone::DecodeImage(before);
    const standalone::eDecodedImage now = standalone::DecodeImage(after);
    if (old.image == nullptr || now.image == nullptr) {
        const eBilingual& broken = (old.image == nullptr ? old : now).problem;
        problem = {ToUtf8(broken.russian), ToUtf8(broken.english)};
        return;
    }
    if (SizeText(*old.image) != SizeText(*now.image)) {
        return changes.push_back(
            eChange::Value({}, ePhrase::ChangeSize, SizeText(*old.image), SizeText(*now.image)));
    }
    const double decibels = Decibels(*old.image, *now.image);
    if (decibels < tolerances.decibels) {
        changes.push_back(eChange::Amount({}, Utf8Words(ePhrase::ChangePicture), decibels, "dB"));
    }
}

}  // namespace diff
