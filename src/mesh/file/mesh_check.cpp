#include "mesh/file/mesh_check.h"

#include <algorithm>

#include "geometry/export_mesh.h"
#include "geometry/vertex_layout.h"
#include "mesh/build/finite_vertex.h"
#include "mesh/read/unit_normal.h"
#include "mesh/strips/sub_mesh.h"

namespace {

class eMeshChecker {
public:
    explicit eMeshChecker(const eFileMesh& checked) : mesh(checked) {}

    std::vector<std::string> Check() {
        for (const eFileSubMesh& subMesh : mesh.subMeshes) {
            CheckHead(subMesh);
            CheckPalette(subMesh);
            if (CheckRanges(subMesh)) {
                CheckVertices(subMesh);
                CheckIndices(subMesh);
            }
        }
        Expect(mesh.indices.size() == 3 * nextTriangle, mesh.indicesPlace,
               "the number of indices is not three times that of the triangles");
        Expect(mesh.vertexCount == nextVertex, mesh.verticesPlace,
               "the number of vertices is not that of the sub-meshes");
        return std::move(problems);
    }

private:
    bool Expect(bool holds, std::size_t place, const char* problem) {
        if (!holds) {
            problems.push_back(std::string(problem) + " at byte " + std::to_string(place));
        }
        return holds;
    }

    void CheckHead(const eFileSubMesh& subMesh) {
        constexpr std::uint16_t kNamedFlags = kSubMeshTwoSided | kSubMeshSkinned;
        constexpr VertexFormat kNamedBits = 0x07F7;
        const bool isSkinned = (subMesh.flags & kSubMeshSkinned) != 0;
        Expect((subMesh.flags & ~kNamedFlags) == 0, subMesh.place, "a sub-mesh has unknown flags");
        Expect(isSkinned == mesh.skinned, subMesh.place, "a sub-mesh and its mesh differ in having a skin");
        Expect(isSkinned || WeightCount(subMesh.format) == 0, subMesh.place, "weights without a skin");
        Expect((subMesh.format & VF_POSITION) != 0 && (subMesh.format & ~kNamedBits) == 0 &&
                   UvCount(subMesh.format) <= 2 && WeightCount(subMesh.format) <= 2,
               subMesh.place, "a vertex format is not known");
    }

    void CheckPalette(const eFileSubMesh& subMesh) {
        const std::vector<std::uint8_t>& palette = subMesh.palette;
        Expect(palette.size() <= kBonesPerPalette, subMesh.place, "a palette has more than 25 entries");
        Expect(std::ranges::adjacent_find(palette, std::greater_equal()) == palette.end(), subMesh.place,
               "the entries of a palette don't rise");
        Expect(palette.empty() || palette.back() <= mesh.bones.size(), subMesh.place,
               "a palette names no bone of the skin");
    }

    // Sub-meshes follow one another in both lists.
    bool CheckRanges(const eFileSubMesh& subMesh) {
        const bool follows = Expect(subMesh.firstTriangle == nextTriangle, subMesh.place,
                                    "the triangles don't follow those of the sub-mesh before");
        const bool isFresh = Expect(subMesh.firstVertex == nextVertex, subMesh.place,
                                    "the vertices don't follow those of the sub-mesh before");
        nextTriangle = std::size_t{subMesh.firstTriangle} + subMesh.triangleCount;
        nextVertex = std::size_t{subMesh.firstVertex} + subMesh.vertexCount;
        const bool fits = Expect(nextVertex <= mesh.vertexCount && 3 * nextTriangle <= mesh.indices.size(),
                                 subMesh.place, "a sub-mesh leaves its mesh");
        const bool hasRoom = Expect(static_cast<std::size_t>(VertexFormatSize(subMesh.format)) <= mesh.stride,
                                    mesh.verticesPlace, "a vertex is larger than the stride");
        return follows && isFresh && fits && hasRoom;
    }

    void CheckVertices(const eFileSubMesh& subMesh) {
        for (std::size_t i = subMesh.firstVertex; i < nextVertex; ++i) {
            const eExportVertex v = mesh.Vertex(subMesh, i);
            const std::size_t place = mesh.verticesPlace + i * mesh.stride;
            Expect(IsFinite(v), place, "a vertex has a number that is not finite");
            Expect((subMesh.format & VF_NORMAL) == 0 || HasUnitLength(v.normal), place,
                   "a normal is not of unit length");
            Expect(IsInBounds(v.position), place, "a position lies outside the bounds");
            Expect(WeightCount(subMesh.format) == 0 || HasKnownBones(v, subMesh), place,
                   "a vertex follows a bone that its palette lacks");
        }
    }

    bool IsInBounds(const host::Point3& p) const {
        host::Box3 box = mesh.bounds;
        box += p;
        return box.pmin == mesh.bounds.pmin && box.pmax == mesh.bounds.pmax;
    }

    static bool HasKnownBones(const eExportVertex& v, const eFileSubMesh& subMesh) {
        return std::ranges::all_of(v.boneIndices,
                                   [&](std::uint8_t bone) { return bone < subMesh.palette.size(); });
    }

    void CheckIndices(const eFileSubMesh& subMesh) {
        for (std::size_t i = std::size_t{3} * subMesh.firstTriangle; i < 3 * nextTriangle; ++i) {
            const std::uint16_t vertex = mesh.indices[i];
            Expect(vertex >= subMesh.firstVertex && vertex < nextVertex,
                   mesh.indicesPlace + i * sizeof vertex, "a triangle uses a vertex of another sub-mesh");
        }
    }

    const eFileMesh& mesh;
    std::vector<std::string> problems;
    std::size_t nextTriangle = 0;
    std::size_t nextVertex = 0;
};

}  // namespace

std::vector<std::string> CheckMesh(const eFileMesh& mesh) {
    return eMeshChecker(mesh).Check();
}
