#include "mesh/strips/strip_growth.h"

#include <algorithm>
#include <array>

#include "mesh/strips/strip_components.h"
#include "mesh/strips/strip_entry.h"
#include "mesh/strips/strip_experiment.h"
#include "mesh/strips/strip_seeds.h"

namespace {

constexpr int samplesPerPass = 10;

// To see whether two experiments start alike takes two strips, and half of them do.
constexpr std::uint32_t fewestStripsToCompare = 6;

class eStripGrowth {
public:
    explicit eStripGrowth(const eStripAdjacency& someAdjacency)
        : adjacency(someAdjacency),
          experiment(someAdjacency),
          seeds(someAdjacency),
          components(someAdjacency) {}

    eStripList Grow() {
        // Some strips turn over fake faces.
        strips.Reserve(adjacency.faces.size() + adjacency.faces.size() / 4);
        taken.reserve(adjacency.faces.size());
        uncommitted = adjacency.faces.size();
        while (uncommitted > 0) {
            PickSeeds();
            Commit(BestStart());
        }
        return std::move(strips);
    }

private:
    void PickSeeds();
    eStripSide BestStart();
    void Commit(eStripSide start);

    const eStripAdjacency& adjacency;
    eStripExperiment experiment;
    eStripSeeds seeds;
    eStripComponents components;
    eStripList strips;
    std::size_t uncommitted = 0;
    std::vector<std::uint32_t> seedsOfPass;
    std::vector<std::uint32_t> taken;
};

void eStripGrowth::PickSeeds() {
    seedsOfPass.clear();
    for (int sample = 0; sample < samplesPerPass; ++sample) {
        const std::optional<std::uint32_t> seed = seeds.NextSeedFace();
        if (seed && std::find(seedsOfPass.begin(), seedsOfPass.end(), *seed) == seedsOfPass.end()) {
            seedsOfPass.push_back(*seed);
        }
    }
}

// The start of the first experiment with the highest value.
eStripSide eStripGrowth::BestStart() {
    eStripSide best = noStripSide;
    float highest = 0.0f;
    for (const std::uint32_t seed : seedsOfPass) {
        std::array<std::uint32_t, kStripEntries> chainOf{};  // by entry: strips of its experiment if measured
        for (int side = 0; side < 3; ++side) {
            const bool against = (adjacency.faces[seed].againstEdge >> side & 1) != 0;
            const eStripSide alongEdge = MakeSide(seed, side, against);
            for (const eStripSide start : {alongEdge, Reversed(alongEdge)}) {
                // No average is above the longest strip there can be, and of equals the first one wins.
                if (highest >= static_cast<float>(components.LongestStrip())) {
                    return best;
                }
                // What has the value of an earlier one can't win.
                if (chainOf[EntryOf(Twin(start))] >= fewestStripsToCompare &&
                    experiment.StartAlike(Twin(start), start)) {
                    continue;
                }
                const eStripMeasure measure = experiment.Measure(start, uncommitted, highest);
                chainOf[EntryOf(start)] = measure.strips;
                if (measure.value > highest) {
                    highest = measure.value;
                    best = start;
                }
            }
        }
    }
    return best;
}

void eStripGrowth::Commit(eStripSide start) {
    experiment.Commit(start, strips, taken);
    for (const std::uint32_t face : taken) {
        seeds.Take(face);
    }
    components.Take(taken);
    uncommitted -= taken.size();
}

}  // namespace

eStripList GrowStrips(const eStripAdjacency& adjacency) {
    return eStripGrowth(adjacency).Grow();
}
