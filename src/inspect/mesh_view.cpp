#include "inspect/mesh_view.h"

#include <cmath>
#include <vector>

#include "base/ansi.h"
#include "geometry/vertex_layout.h"
#include "mesh/file/mesh_check.h"
#include "mesh/file/mesh_reader.h"
#include "mesh/strips/cache_statistics.h"
#include "mesh/strips/sub_mesh.h"

namespace inspect {

namespace {

std::string FormatWords(VertexFormat format) {
    std::string words = "position";
    if (const int weights = WeightCount(format); weights != 0) {
        words += " bones:" + std::to_string(weights + 1);
    }
    words += (format & VF_NORMAL) != 0 ? " normal" : "";
    words += (format & VF_COLOR) != 0 ? " colour" : "";
    if (const int maps = UvCount(format); maps != 0) {
        words += " maps:" + std::to_string(maps);
    }
    words += (format & VF_TANGENT) != 0 ? " tangent" : "";
    return words;
}

double Rounded(double value) {
    return std::round(value * 1000) / 1000;
}

eDescription DescribePoint(const host::Point3& p) {
    return {ShownMetres(p.x), ShownMetres(p.y), ShownMetres(p.z)};
}

std::span<const std::uint16_t> IndicesOf(const eFileMesh& mesh, const eFileSubMesh& subMesh) {
    const std::span<const std::uint16_t> all(mesh.indices);
    const std::size_t first = std::min(std::size_t{3} * subMesh.firstTriangle, all.size());
    return all.subspan(first, std::min(std::size_t{3} * subMesh.triangleCount, all.size() - first));
}

eDescription DescribeSubMesh(const eFileMesh& mesh, const eFileSubMesh& subMesh) {
    const eCacheStatistics cache = SimulateVertexCache(IndicesOf(mesh, subMesh), kTargetCacheSize);
    return {{"material", ToUtf8(subMesh.material)},
            {"format", FormatWords(subMesh.format)},
            {"vertexBytes", VertexFormatSize(subMesh.format)},
            {"triangles", subMesh.triangleCount},
            {"vertices", subMesh.vertexCount},
            {"twoSided", (subMesh.flags & kSubMeshTwoSided) != 0},
            {"palette", subMesh.palette},
            {"acmr", Rounded(cache.MissesPerTriangle())},
            {"atvr", Rounded(cache.MissesPerVertex())}};
}

eDescription DescribeMesh(const eFileMesh& mesh) {
    eDescription bones = eDescription::array();
    for (const std::string& bone : mesh.bones) {
        bones.push_back(ToUtf8(bone));
    }
    eDescription subMeshes = eDescription::array();
    for (const eFileSubMesh& subMesh : mesh.subMeshes) {
        subMeshes.push_back(DescribeSubMesh(mesh, subMesh));
    }
    const eCacheStatistics cache = SimulateVertexCache(mesh.indices, kTargetCacheSize);
    return {{"name", ToUtf8(mesh.name)},
            {"offset", mesh.place},
            {"bytes", mesh.size},
            {"lowest", DescribePoint(mesh.bounds.pmin)},
            {"highest", DescribePoint(mesh.bounds.pmax)},
            {"skinned", mesh.skinned},
            {"bones", bones},
            {"triangles", mesh.indices.size() / 3},
            {"vertices", mesh.vertexCount},
            {"stride", mesh.stride},
            {"acmr", Rounded(cache.MissesPerTriangle())},
            {"atvr", Rounded(cache.MissesPerVertex())},
            {"subMeshes", subMeshes},
            {"problems", CheckMesh(mesh)}};
}

}  // namespace

eDescription DescribeMeshes(std::span<const std::uint8_t> bytes, std::string& problem) {
    const std::optional<eMeshFileContent> file = ReadMeshFile(bytes, problem);
    if (!file) {
        return {};
    }
    eDescription meshes = eDescription::array();
    std::size_t triangles = 0;
    for (const eFileMesh& mesh : file->meshes) {
        triangles += mesh.indices.size() / 3;
        meshes.push_back(DescribeMesh(mesh));
    }
    return {{"kind", "meshes"},       {"bytes", bytes.size()},         {"count", file->meshes.size()},
            {"triangles", triangles}, {"cacheSize", kTargetCacheSize}, {"meshes", meshes}};
}

}  // namespace inspect
