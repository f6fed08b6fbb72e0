// Normal maps as DXT5 with this encoder and beside it two others. What must hold: on every map G is no worse
// than the peer's of high quality, A and A_exact at least 1 dB better, and the whole file with all levels is
// made at 40 megapixels a second or more on one core.
//
// Mpx/s counts the pixels of the first level. The peers encode that level only, we all levels and the rest of
// the file. G, B and A are the PSNR of that level in dB after the peer's decoder, which cuts the values
// between two ends to whole bytes; G_exact and A_exact keep their fractions, as graphics hardware does to a
// degree. angle is the root mean square error of the decoded normal in degrees.
#include <benchmark/benchmark.h>
#include <squish.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <numbers>
#include <string>
#include <vector>

#include "exact_alphas.h"
#include "normal_maps.h"
#include "texture/block_group.h"
#include "texture/color_bits.h"
#include "texture/compress_image.h"

#define STB_DXT_IMPLEMENTATION
#include <stb/stb_dxt.h>
#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>

namespace {

constexpr std::size_t blockBytes = 16;
constexpr double degreesPerRadian = 180.0 / std::numbers::pi;

using eBytes = std::vector<std::uint8_t>;

// Of a channel, between an image and its decoded pixels.
template <class Value>
double Psnr(const ePixelImage& image, const std::vector<Value>& decoded, std::size_t channel) {
    double sum = 0;
    for (std::size_t i = channel; i < image.rgba.size(); i += 4) {
        const double difference = double{1} * image.rgba[i] - double{1} * decoded[i];
        sum += difference * difference;
    }
    const double mean = sum / (static_cast<double>(image.rgba.size()) / 4);
    return 10.0 * std::log10(255.0 * 255.0 / std::max(mean, 1e-9));
}

// G and A of a block of DXT5 with the fractions that lie between the ends.
void DecodeExactly(const std::uint8_t* block, const std::array<double*, blockPixels>& pixels) {
    const std::array<double, blockPixels> alphas = ExactAlphas(block);
    const std::array<unsigned, 2> ends = {(block[8] | (block[9] << 8)) >> 5 & 63U,
                                          (block[10] | (block[11] << 8)) >> 5 & 63U};
    const double a = ExpandedBits(ends[0], greenChannel);
    const double b = ExpandedBits(ends[1], greenChannel);
    const std::array<double, 4> greens = {a, b, (2 * a + b) / 3, (a + 2 * b) / 3};
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        pixels[pixel][3] = alphas[pixel];
        pixels[pixel][1] = greens[(block[12 + pixel / 4] >> (2 * (pixel % 4))) & 3];
    }
}

std::vector<double> DecodedExactly(const ePixelImage& image, const eBytes& blocks) {
    std::vector<double> decoded(image.rgba.size());
    const std::uint8_t* block = blocks.data();
    for (std::size_t y = 0; y < image.height; y += 4) {
        for (std::size_t x = 0; x < image.width; x += 4) {
            std::array<double*, blockPixels> pixels;
            for (std::size_t i = 0; i < blockPixels; i++) {
                pixels[i] = decoded.data() + 4 * ((y + i / 4) * image.width + x + i % 4);
            }
            DecodeExactly(block, pixels);
            block += blockBytes;
        }
    }
    return decoded;
}

std::array<double, 3> NormalOf(const std::uint8_t* pixel) {
    std::array<double, 3> normal = {pixel[3] - 127.5, pixel[1] - 127.5, pixel[2] - 127.5};
    const double length = std::hypot(normal[0], normal[1], normal[2]);
    for (double& component : normal) {
        component /= length;
    }
    return normal;
}

double AngleError(const ePixelImage& a, const eBytes& b) {
    double sum = 0;
    for (std::size_t i = 0; i < b.size(); i += 4) {
        const auto source = NormalOf(&a.rgba[i]);
        const auto decoded = NormalOf(&b[i]);
        const double cosine = source[0] * decoded[0] + source[1] * decoded[1] + source[2] * decoded[2];
        const double angle = std::acos(std::min(1.0, cosine)) * degreesPerRadian;
        sum += angle * angle;
    }
    return std::sqrt(sum / (static_cast<double>(b.size()) / 4));
}

void Judge(benchmark::State& state, const ePixelImage& image, const eBytes& blocks) {
    eBytes cut(image.rgba.size());
    squish::DecompressImage(cut.data(), static_cast<int>(image.width), static_cast<int>(image.height),
                            blocks.data(), squish::kDxt5);
    const std::vector<double> exact = DecodedExactly(image, blocks);
    state.counters["G"] = Psnr(image, cut, 1);
    state.counters["B"] = Psnr(image, cut, 2);
    state.counters["A"] = Psnr(image, cut, 3);
    state.counters["G_exact"] = Psnr(image, exact, 1);
    state.counters["A_exact"] = Psnr(image, exact, 3);
    state.counters["angle"] = AngleError(image, cut);
    const double megapixels = static_cast<double>(image.rgba.size()) / 4e6;
    state.counters["Mpx/s"] = benchmark::Counter(megapixels, benchmark::Counter::kIsIterationInvariantRate);
}

// The image as the exporter hands it over: B, G, R, A.
void WholeFile(benchmark::State& state, const ePixelImage& image) {
    eBytes bgra = image.rgba;
    for (std::size_t i = 0; i < bgra.size(); i += 4) {
        std::swap(bgra[i], bgra[i + 2]);
    }
    CompressionOptions options;
    options.g_texture_format = 3;
    eBytes firstLevel;
    for (auto _ : state) {
        const int result = CompressImage(
            bgra.data(), image.width, image.height, static_cast<int>(4 * image.width), pixelLayoutBgra,
            options, [&](const void* buffer, std::size_t byteCount, const eMipInfo* mipInfo, std::intptr_t) {
                if (mipInfo != nullptr && mipInfo->level == 0) {
                    const auto* bytes = static_cast<const std::uint8_t*>(buffer);
                    firstLevel.assign(bytes, bytes + byteCount);
                }
                return 0;
            });
        benchmark::DoNotOptimize(result);
    }
    Judge(state, image, firstLevel);
}

template <class Encode>
void FirstLevelOnly(benchmark::State& state, const ePixelImage& image, Encode encode) {
    eBytes blocks(BlocksAlong(image.width) * BlocksAlong(image.height) * blockBytes);
    for (auto _ : state) {
        std::uint8_t* target = blocks.data();
        for (std::size_t y = 0; y < image.height; y += 4) {
            for (std::size_t x = 0; x < image.width; x += 4) {
                std::array<std::uint8_t, 64> pixels;
                for (std::size_t row = 0; row < 4; row++) {
                    std::memcpy(pixels.data() + 16 * row, image.Pixel(x, y + row), 16);
                }
                encode(target, pixels.data());
                target += blockBytes;
            }
        }
        benchmark::ClobberMemory();
    }
    Judge(state, image, blocks);
}

void StbHighQuality(benchmark::State& state, const ePixelImage& image) {
    FirstLevelOnly(state, image, [](std::uint8_t* target, const std::uint8_t* pixels) {
        stb_compress_dxt_block(target, pixels, 1, STB_DXT_HIGHQUAL);
    });
}

void SquishClusterFit(benchmark::State& state, const ePixelImage& image) {
    FirstLevelOnly(state, image, [](std::uint8_t* target, const std::uint8_t* pixels) {
        squish::Compress(pixels, target, squish::kDxt5 | squish::kColourClusterFit);
    });
}

// A picture of normals in its usual colours, brought into the layout of the textures.
void AddSample(const std::filesystem::path& path, std::vector<eNormalMap>& maps) {
    int width = 0;
    int height = 0;
    int channels = 0;
    std::uint8_t* pixels = stbi_load(path.string().c_str(), &width, &height, &channels, 4);
    if (pixels == nullptr) {
        return;
    }
    ePixelImage image;
    image.width = static_cast<unsigned>(width) / 4 * 4;
    image.height = static_cast<unsigned>(height) / 4 * 4;
    for (std::size_t y = 0; y < image.height; y++) {
        for (std::size_t x = 0; x < image.width; x++) {
            const std::uint8_t* pixel = pixels + 4 * (y * static_cast<std::size_t>(width) + x);
            image.rgba.insert(image.rgba.end(),
                              {0, static_cast<std::uint8_t>(255 - pixel[1]), pixel[2], pixel[0]});
        }
    }
    stbi_image_free(pixels);
    maps.push_back({path.stem().string(), image});
}

}  // namespace

// An argument that is no flag is a picture of normals to measure too.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::vector<eNormalMap> maps = MakeNormalMaps(1024);
    for (int i = 1; i < argc; i++) {
        AddSample(argv[i], maps);
    }
    for (const eNormalMap& map : maps) {
        const ePixelImage& image = map.image;
        benchmark::RegisterBenchmark(("ours/" + map.name).c_str(), WholeFile, image);
        benchmark::RegisterBenchmark(("stb_dxt/" + map.name).c_str(), StbHighQuality, image);
        benchmark::RegisterBenchmark(("squish/" + map.name).c_str(), SquishClusterFit, image);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
