#include "diff/vertex_changes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "geometry/vertex_layout.h"
#include "written/exact_space.h"

namespace diff {

namespace {

using written::operator-;  // of std::array, which no argument leads to
constexpr double kMapStep = 0.001;
constexpr double kColorStep = 1;
constexpr double kWeightStep = 0.0001;

double MapDistance(const host::Point2& a, const host::Point2& b) {
    return std::max(std::fabs(double{a.x} - b.x), std::fabs(double{a.y} - b.y));
}

// The largest of the four channels, of 255.
double ColorDistance(std::uint32_t a, std::uint32_t b) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        largest = std::max(
            largest, std::abs(static_cast<int>(a >> shift & 0xff) - static_cast<int>(b >> shift & 0xff)));
    }
    return largest;
}

// The shares of the bones at a vertex, behind its palette; the mesh's own bone has no name.
std::map<std::string, double> SharesOf(const eSeenVertex& seen) {
    std::map<std::string, double> shares;
    const int stored = WeightCount(seen.vertex.format);
    double rest = 1;
    for (int i = 0; i <= stored; ++i) {
        const double weight = i < stored ? seen.vertex.weights[i] : rest;
        rest -= weight;
        const std::size_t entry = seen.vertex.boneIndices[i];
        const auto& palette = seen.subMesh->palette;
        const std::size_t number = stored > 0 && entry < palette.size() ? palette[entry] : 0;
        shares[number > 0 && number <= seen.mesh->bones.size() ? seen.mesh->bones[number - 1] : ""] += weight;
    }
    return shares;
}

double ShareDistance(const eSeenVertex& before, const eSeenVertex& after) {
    std::map<std::string, double> shares = SharesOf(after);
    for (const auto& [bone, weight] : SharesOf(before)) {
        shares[bone] -= weight;
    }
    double largest = 0;
    for (const auto& [bone, weight] : shares) {
        largest = std::max(largest, std::fabs(weight));
    }
    return largest;
}

const char* UnitOf(ePhrase what) {
    return what == ePhrase::ChangeVertices ? "m" : what == ePhrase::ChangeNormals ? "degrees" : "";
}

}  // namespace

void eVertexChanges::Meet(const eSeenVertex& before, const eSeenVertex& after) {
    const eExportVertex& a = before.vertex;
    const eExportVertex& b = after.vertex;
    const VertexFormat both = a.format & b.format;
    Count(ePhrase::ChangeVertices, written::Length(written::Exact(a.position) - written::Exact(b.position)),
          bounds_.metres);
    if ((both & VF_NORMAL) != 0) {
        Count(ePhrase::ChangeNormals,
              written::AngleBetween(written::Exact(a.normal), written::Exact(b.normal)), bounds_.degrees);
    }
    const int maps = std::min(UvCount(a.format), UvCount(b.format));
    const double map = maps > 0 ? MapDistance(a.uv0, b.uv0) : 0;
    Count(ePhrase::ChangeMapping, maps > 1 ? std::max(map, MapDistance(a.uv1, b.uv1)) : map, kMapStep);
    if ((both & VF_COLOR) != 0) {
        Count(ePhrase::ChangeColours, ColorDistance(a.color, b.color), kColorStep);
    }
    if (before.mesh->skinned && after.mesh->skinned) {
        Count(ePhrase::ChangeWeights, ShareDistance(before, after), kWeightStep);
    }
}

void eVertexChanges::Tell(const eBilingual& of, eChanges& changes) const {
    for (const auto& [what, counted] : found_) {
        changes.push_back(eChange::Amount(of, Utf8Words(what), counted.largest, UnitOf(what), counted.count));
    }
}

void eVertexChanges::Count(ePhrase what, double amount, double bound) {
    if (amount > bound) {
        eCounted& counted = found_[what];
        ++counted.count;
        counted.largest = std::max(counted.largest, amount);
    }
}

}  // namespace diff
