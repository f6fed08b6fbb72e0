#include "verify/mesh_match.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "geometry/vertex_layout.h"
#include "verify/triangle_grid.h"
#include "verify/written_weights.h"

namespace verify {

namespace {

// Corners that differ by no more in each number become one vertex.
constexpr double kWeld = 0.001;
constexpr double kColorStep = 1;  // levels of 255 that rounding may take
constexpr double kWeightStep = 1e-4;

// The corners of a triangle in all orders; behind the third they run the other way round.
constexpr std::size_t kTurnings[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}, {1, 0, 2}, {0, 2, 1}};
constexpr int kSameSide = 3;

// How far a triangle of the file lies from one of the scene.
struct eDeviation {
    double metres = 0;
    double map = 0;
    double degrees = 0;
    double color = 0;
    double weight = 0;
    bool isOtherMaterial = false;
    int turning = 0;  // in kTurnings

    bool IsTurned() const { return turning >= kSameSide; }
};

double ColorLevel(float value) {
    return std::floor(std::clamp(value, 0.0F, 1.0F) * 255 + 0.5F);
}

double ColorDifference(const std::array<float, 4>& scene, std::uint32_t file) {
    double largest = 0;
    for (unsigned i = 0; i < 4; ++i) {
        const unsigned shift = i < 3 ? 16 - 8 * i : 24;
        largest =
            std::max(largest, std::fabs(ColorLevel(scene[i]) - static_cast<double>(file >> shift & 0xFFU)));
    }
    return largest;
}

double MapDifference(const std::array<double, 2>& scene, const host::Point2& file) {
    return std::max(std::fabs(scene[0] - file.x), std::fabs(scene[1] - file.y));
}

class eMeshMatch {
public:
    eMeshMatch(const eSceneMesh& source, const eSceneTriangles& scene, const eFileMesh& file,
               const eTolerances& tolerances, eMeshVerdict& verdict)
        : source_(source),
          scene_(scene),
          file_(file),
          bounds_(tolerances),
          weights_(file, scene),
          verdict_(verdict) {
        // Single precision far from the origin is coarser than any tolerance.
        constexpr double kSinglePrecision = 1e-6;
        for (int i = 0; i < 3; ++i) {
            slack_ = std::max({slack_, kSinglePrecision * std::fabs(file.bounds.pmin[i]),
                               kSinglePrecision * std::fabs(file.bounds.pmax[i])});
        }
        bounds_.metres += slack_;
        CollectTriangles();
    }

    eCornerVertices Match() {
        CompareSkins();
        vertices_.assign(scene_.triangles.size(), {-1, -1, -1});
        eTriangleGrid near(triangles_, bounds_.metres);
        std::vector<const eSceneTriangle*> left;
        for (const eSceneTriangle& triangle : scene_.triangles) {
            if (!TakeEqual(near, triangle)) {
                left.push_back(&triangle);
            }
        }
        if (CountFree() > 0) {
            std::erase_if(left, [&](const eSceneTriangle* triangle) {
                std::set<const eFileTriangle*> tried;
                const bool isFound = TakeByMoving(near, *triangle, tried);
                verdict_.found += isFound ? 1 : 0;
                return isFound;
            });
        }
        std::erase_if(left, [&](const eSceneTriangle* triangle) { return IsLeftOutByRule(near, *triangle); });
        if (!left.empty()) {
            eTriangleGrid far(triangles_, kFar * bounds_.metres);
            std::ranges::for_each(left,
                                  [&](const eSceneTriangle* triangle) { TellDifference(far, *triangle); });
        }
        TellForeignTriangles();
        return std::move(vertices_);
    }

private:
    static constexpr double kExact = 1e-6;  // metres
    static constexpr double kFar = 10;      // times the bound: what lies farther off is another triangle

    void CollectTriangles() {
        for (const eFileSubMesh& subMesh : file_.subMeshes) {
            for (std::size_t i = 0; i < subMesh.triangleCount; ++i) {
                eFileTriangle& triangle = triangles_.emplace_back();
                triangle.subMesh = &subMesh;
                for (std::size_t c = 0; c < 3; ++c) {
                    // The engine's triangles run the other way round.
                    const std::uint16_t vertex = file_.indices[3 * (subMesh.firstTriangle + i) + 2 - c];
                    triangle.vertices[c] = vertex;
                    triangle.corners[c] = file_.Vertex(subMesh, vertex);
                }
            }
        }
    }

    void CompareSkins() {
        if (file_.skinned != scene_.isSkinned) {
            verdict_.findings.Add("skin", 0, file_.skinned ? "only the file has one" : "the file has none");
        } else if (file_.skinned &&
                   !std::equal(file_.bones.begin(), file_.bones.end(), scene_.boneNames.begin(),
                               scene_.boneNames.begin() + static_cast<std::ptrdiff_t>(scene_.skinBones))) {
            verdict_.findings.Add("skin", 0, "the bones are others");
        }
    }

    std::string PlaceOf(const eSceneTriangle& triangle) const {
        const eVector& p = triangle.corners[0].position;
        char text[80];
        std::snprintf(text, sizeof text, " at %.3f %.3f %.3f", p[0], p[1], p[2]);
        return source_.feeders[static_cast<std::size_t>(triangle.node)]->GetName() + text;
    }

    static eVector MiddleOf(const eSceneTriangle& triangle) {
        eVector middle{};
        for (const eSceneCorner& corner : triangle.corners) {
            for (std::size_t i = 0; i < 3; ++i) {
                middle[i] += corner.position[i] / 3;
            }
        }
        return middle;
    }

    static double PositionDifference(const eSceneTriangle& scene, const eFileTriangle& file, int turning) {
        double largest = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            largest = std::max(largest, CornerDistance(scene, file, turning, i));
        }
        return largest;
    }
    static double CornerDistance(const eSceneTriangle& scene, const eFileTriangle& file, int turning,
                                 std::size_t corner) {
        return LargestDifference(scene.corners[corner].position,
                                 Exact(file.corners[kTurnings[turning][corner]].position));
    }
    static bool IsNear(const eSceneTriangle& scene, const eFileTriangle& file, int turning, double reach) {
        return CornerDistance(scene, file, turning, 0) <= reach &&
               CornerDistance(scene, file, turning, 1) <= reach &&
               CornerDistance(scene, file, turning, 2) <= reach;
    }

    eDeviation Compare(const eSceneTriangle& scene, const eFileTriangle& file, int turningNumber) const {
        const auto& turning = kTurnings[turningNumber];
        eDeviation deviation;
        deviation.metres = PositionDifference(scene, file, turningNumber);
        deviation.turning = turningNumber;
        const std::string& material = file.subMesh->material;
        // The name stands behind the way to its folder.
        deviation.isOtherMaterial = material.substr(material.rfind('/') + 1) !=
                                    scene_.materials[static_cast<std::size_t>(scene.material)];
        for (std::size_t i = 0; i < 3; ++i) {
            CompareCorner(scene, scene.corners[i], file.corners[turning[i]], *file.subMesh, deviation);
        }
        return deviation;
    }

    void CompareCorner(const eSceneTriangle& triangle, const eSceneCorner& scene, const eExportVertex& file,
                       const eFileSubMesh& subMesh, eDeviation& deviation) const {
        constexpr std::uint32_t kWhite = 0xFFFFFFFF;
        const VertexFormat format = file.format;
        deviation.map = std::max(deviation.map, MapDifference(scene.maps[0], file.uv0));
        if (triangle.hasSecondMap) {
            deviation.map = std::max(deviation.map, MapDifference(scene.maps[1], file.uv1));
        }
        deviation.degrees =
            std::max(deviation.degrees,
                     AngleBetween(scene_.isLit ? eVector{0, 0, 1} : scene.normal, Exact(file.normal)));
        deviation.color = std::max(
            deviation.color, ColorDifference(scene.color, (format & VF_COLOR) != 0 ? file.color : kWhite));
        if (scene_.isSkinned || file_.skinned) {
            deviation.weight = std::max(deviation.weight, weights_.Difference(scene, file, subMesh));
        }
    }

    // `share`: 1 for the bounds themselves.
    bool IsWithin(const eDeviation& deviation, double share) const {
        return !deviation.IsTurned() && !deviation.isOtherMaterial &&
               deviation.metres <= share * bounds_.metres && deviation.map <= share * MapBound() &&
               deviation.degrees <= share * bounds_.degrees && deviation.color <= share * kColorStep &&
               deviation.weight <= share * kWeightStep;
    }
    double MapBound() const { return kWeld + 1e-6; }

    // The nearest of the file's triangles that `isWanted`, in its best turning.
    template <class Wanted>
    std::pair<eFileTriangle*, eDeviation> Nearest(eTriangleGrid& grid, const eSceneTriangle& triangle,
                                                  double reach, int turnings, Wanted isWanted) const {
        std::pair<eFileTriangle*, eDeviation> best{nullptr, {}};
        double bestScore = 0;
        grid.Near(MiddleOf(triangle), [&](eFileTriangle& candidate) {
            for (int turning = 0; isWanted(candidate) && turning < turnings; ++turning) {
                if (!IsNear(triangle, candidate, turning, reach) ||
                    (best.first != nullptr &&
                     PositionDifference(triangle, candidate, turning) >= bestScore * bounds_.metres)) {
                    continue;
                }
                const eDeviation deviation = Compare(triangle, candidate, turning);
                const double score = ScoreOf(deviation);
                if (best.first == nullptr || score < bestScore) {
                    best = {&candidate, deviation};
                    bestScore = score;
                }
            }
        });
        return best;
    }

    double ScoreOf(const eDeviation& deviation) const {
        return deviation.metres / bounds_.metres + deviation.map / MapBound() +
               deviation.degrees / bounds_.degrees + deviation.color + deviation.weight / kWeightStep +
               (deviation.isOtherMaterial ? 1e3 : 0) + (deviation.IsTurned() ? 1e3 : 0);
    }

    // Most triangles are in the file to the last bit: looking for those first keeps a crowd of small
    // triangles from being compared one by one, and from taking each other's places.
    bool TakeEqual(eTriangleGrid& grid, const eSceneTriangle& triangle) {
        return TakeWithin(grid, triangle, std::min(kExact + slack_, bounds_.metres)) ||
               TakeWithin(grid, triangle, bounds_.metres);
    }
    bool TakeWithin(eTriangleGrid& grid, const eSceneTriangle& triangle, double reach) {
        const auto [found, deviation] =
            Nearest(grid, triangle, reach, kSameSide, [](const eFileTriangle& t) { return !t.IsTaken(); });
        if (found == nullptr || !IsWithin(deviation, 1)) {
            return false;
        }
        Take(triangle, *found, deviation);
        ++verdict_.found;
        return true;
    }

    // Where triangles lie within the tolerance of each other, one may have been found in another's place: it
    // moves on to a place that is free, and so may those behind it.
    bool TakeByMoving(eTriangleGrid& grid, const eSceneTriangle& triangle,
                      std::set<const eFileTriangle*>& tried) {
        bool isFound = false;
        grid.Near(MiddleOf(triangle), [&](eFileTriangle& candidate) {
            for (int turning = 0; !isFound && turning < kSameSide; ++turning) {
                if (!IsNear(triangle, candidate, turning, bounds_.metres)) {
                    continue;
                }
                const eDeviation deviation = Compare(triangle, candidate, turning);
                if (!IsWithin(deviation, 1) || !tried.insert(&candidate).second) {
                    continue;
                }
                if (!candidate.IsTaken() || TakeByMoving(grid, OwnerOf(candidate), tried)) {
                    Take(triangle, candidate, deviation);
                    isFound = true;
                }
            }
        });
        return isFound;
    }
    const eSceneTriangle& OwnerOf(const eFileTriangle& triangle) const {
        return scene_.triangles[static_cast<std::size_t>(triangle.owner)];
    }

    void Take(const eSceneTriangle& triangle, eFileTriangle& found, const eDeviation& deviation) {
        found.owner = static_cast<int>(&triangle - scene_.triangles.data());
        for (std::size_t i = 0; i < 3; ++i) {
            vertices_[static_cast<std::size_t>(found.owner)][i] =
                found.vertices[kTurnings[deviation.turning][i]];
        }
        verdict_.metres = std::max(verdict_.metres, deviation.metres);
        verdict_.map = std::max(verdict_.map, deviation.map);
        verdict_.degrees = std::max(verdict_.degrees, deviation.degrees);
        verdict_.color = std::max(verdict_.color, deviation.color);
        verdict_.weight = std::max(verdict_.weight, deviation.weight);
    }

    // Two corners may have become one vertex, or another triangle of the scene is this one in the file.
    bool IsLeftOutByRule(eTriangleGrid& grid, const eSceneTriangle& triangle) {
        const auto& [a, b, c] = triangle.corners;
        if (MayJoin(a, b) || MayJoin(b, c) || MayJoin(c, a)) {
            ++verdict_.degenerate;
            return true;
        }
        // Each of two corners may lie a tolerance away from the vertex that they share.
        const auto [found, deviation] = Nearest(grid, triangle, 2 * bounds_.metres, kSameSide,
                                                [](const eFileTriangle& t) { return t.IsTaken(); });
        const bool isRepeated = found != nullptr && IsWithin(deviation, 2);
        verdict_.repeated += isRepeated ? 1 : 0;
        return isRepeated;
    }

    bool MayJoin(const eSceneCorner& a, const eSceneCorner& b) const {
        const double reach = 2 * kWeld + slack_;
        const auto isNear = [](const auto& first, const auto& second, double bound) {
            return std::ranges::equal(first, second,
                                      [&](double x, double y) { return std::fabs(x - y) <= bound; });
        };
        return LargestDifference(a.position, b.position) <= reach && isNear(a.maps[0], b.maps[0], reach) &&
               isNear(a.maps[1], b.maps[1], reach);
    }

    void TellDifference(eTriangleGrid& grid, const eSceneTriangle& triangle) {
        const auto [found, deviation] = Nearest(grid, triangle, kFar * bounds_.metres, 6,
                                                [](const eFileTriangle& t) { return !t.IsTaken(); });
        const std::string place = PlaceOf(triangle);
        if (found == nullptr) {
            verdict_.findings.Add("missing triangle", 0, place);
            return;
        }
        Take(triangle, *found, deviation);
        ++verdict_.found;
        TellIf(deviation.IsTurned(), "turned triangle", 0, place);
        TellIf(deviation.isOtherMaterial, "material", 0, place);
        TellIf(deviation.metres > bounds_.metres, "moved triangle", deviation.metres, place);
        TellIf(deviation.map > MapBound(), "map coordinates", deviation.map, place);
        TellIf(deviation.degrees > bounds_.degrees, "normal", deviation.degrees, place);
        TellIf(deviation.color > kColorStep, "colour", deviation.color, place);
        TellIf(deviation.weight > kWeightStep, "weights", deviation.weight, place);
    }

    void TellIf(bool isBroken, const char* kind, double amount, const std::string& place) {
        if (isBroken) {
            verdict_.findings.Add(kind, amount, place);
        }
    }

    std::ptrdiff_t CountFree() const {
        return std::ranges::count_if(triangles_, [](const eFileTriangle& t) { return !t.IsTaken(); });
    }

    void TellForeignTriangles() {
        for (const eFileTriangle& triangle : triangles_) {
            if (!triangle.IsTaken()) {
                const host::Point3& p = triangle.corners[0].position;
                char text[80];
                std::snprintf(text, sizeof text, "at %.3f %.3f %.3f", p.x, p.y, p.z);
                verdict_.findings.Add("foreign triangle", 0, text);
            }
        }
    }

    const eSceneMesh& source_;
    const eSceneTriangles& scene_;
    const eFileMesh& file_;
    eTolerances bounds_;
    double slack_ = 0;  // metres
    eWrittenWeights weights_;
    eMeshVerdict& verdict_;
    std::vector<eFileTriangle> triangles_;
    eCornerVertices vertices_;
};

}  // namespace

eCornerVertices MatchMesh(const eSceneMesh& source, const eSceneTriangles& scene, const eFileMesh& file,
                          const eTolerances& tolerances, eMeshVerdict& verdict) {
    return eMeshMatch(source, scene, file, tolerances, verdict).Match();
}

}  // namespace verify
