#include "verify/verify_mesh.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "mesh/file/mesh_check.h"

namespace verify {

namespace {

constexpr std::size_t kMostTriangles = 65535;
constexpr std::size_t kMostVertices = 65534;

template <class Numbers>
bool AreFinite(const Numbers& numbers) {
    return std::ranges::all_of(numbers, [](double n) { return std::isfinite(static_cast<float>(n)); });
}

bool IsFinite(const eSceneTriangle& triangle) {
    return std::ranges::all_of(triangle.corners, [](const eSceneCorner& c) {
        return AreFinite(c.position) && AreFinite(c.maps[0]) && AreFinite(c.maps[1]) && AreFinite(c.normal);
    });
}

// Corners that stay apart whatever is joined: each stands alone in its millimetre.
std::size_t CountSeparateCorners(const eSceneTriangles& scene) {
    std::set<std::array<std::int64_t, 3>> places;
    for (const eSceneTriangle& triangle : scene.triangles) {
        for (const eSceneCorner& corner : triangle.corners) {
            std::array<std::int64_t, 3> place{};
            std::ranges::transform(corner.position, place.begin(), [](double coordinate) {
                return static_cast<std::int64_t>(std::floor(coordinate * 1000));
            });
            places.insert(place);
        }
    }
    return places.size();
}

// Why no file can hold the mesh; empty if one can.
std::string RefusalOf(const eSceneTriangles& scene) {
    if (!std::ranges::all_of(scene.triangles, IsFinite)) {
        return "a number that is none";
    }
    if (scene.triangles.size() > kMostTriangles) {
        return "more than 65535 triangles";
    }
    return scene.triangles.empty() && !scene.refusals.empty() ? scene.refusals.front() : std::string();
}

void VerifyAbsence(const eSceneTriangles& scene, eMeshVerdict& verdict) {
    if (verdict.refusal.empty() && !scene.refusals.empty()) {
        verdict.refusal = scene.refusals.front();
    } else if (CountSeparateCorners(scene) > kMostVertices) {
        verdict.refusal = "more than 65534 vertices";
    }
    if (!verdict.refusal.empty()) {
        verdict.refused = verdict.triangles;
    } else if (verdict.triangles > 0) {
        verdict.findings.Add("missing mesh", 0, verdict.name);
    }
}

}  // namespace

eVerifiedMesh VerifyMesh(const eVerifiedScene& scene, const eSceneMesh& source, eBakedLight& light,
                         eWrittenMeshes& files, const eTolerances& tolerances) {
    eSceneTriangles triangles = ReadSceneTriangles(scene, source, light, scene.StaticTime());
    eVerifiedMesh mesh{.verdict = {.name = source.name, .file = source.folder / ".mesh"}, .source = source};
    mesh.verdict.triangles = static_cast<int>(triangles.triangles.size());
    mesh.verdict.hidden = triangles.hidden;
    mesh.verdict.refusal = RefusalOf(triangles);
    const eFileMesh* const file = files.Take(source.folder, source.name);
    if (file == nullptr) {
        VerifyAbsence(triangles, mesh.verdict);
    } else if (!mesh.verdict.refusal.empty()) {
        mesh.verdict.findings.Add("foreign mesh", 0, mesh.verdict.refusal);
    } else if (const std::vector<std::string> problems = CheckMesh(*file); !problems.empty()) {
        mesh.verdict.findings.Add("broken mesh", 0, problems.front());
    } else {
        mesh.vertices = MatchMesh(source, triangles, *file, tolerances, mesh.verdict);
        mesh.file = file;
    }
    mesh.scene = std::move(triangles);
    return mesh;
}

}  // namespace verify
