#include "mesh/strips/strip_seeds.h"

#include <algorithm>

namespace {

constexpr float seedPositionStep = 0.1f;
constexpr float seedPositionRestart = 0.05f;

}  // namespace

eStripSeeds::eStripSeeds(const eStripAdjacency& someAdjacency)
    : adjacency(someAdjacency), free(someAdjacency.faces.size()) {}

std::optional<std::uint32_t> eStripSeeds::NextSeedFace() {
    const auto count = static_cast<std::uint32_t>(adjacency.faces.size());
    auto place = static_cast<std::uint32_t>(static_cast<float>(count - 1) * seedPosition);
    if (firstSeed) {
        firstSeed = false;
        place = FirstSeedFace().value_or(place);
    }
    // The position is meant in single precision: its steps don't quite add up to 1, and that decides the pass
    // in which it starts anew.
    seedPosition += seedPositionStep;
    if (seedPosition > 1.0f) {
        seedPosition = seedPositionRestart;
    }
    std::uint32_t seed = free.AtOrAbove(std::min(place, count));
    if (seed == count) {
        seed = free.AtOrAbove(0);
    }
    return seed == count ? std::nullopt : std::optional(seed);
}

// The first of the faces with the most open sides.
std::optional<std::uint32_t> eStripSeeds::FirstSeedFace() const {
    std::optional<std::uint32_t> result;
    std::ptrdiff_t most = 0;
    for (std::uint32_t f = 0; f < adjacency.faces.size(); ++f) {
        const auto& across = adjacency.faces[f].across;
        const std::ptrdiff_t open = std::count(std::begin(across), std::end(across), noStripSide);
        if (open > most) {
            most = open;
            result = f;
        }
    }
    return result;
}
