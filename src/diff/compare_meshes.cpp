#include "diff/compare_meshes.h"

#include <algorithm>
#include <numbers>

#include "base/ansi.h"
#include "base/number_text.h"
#include "diff/vertex_changes.h"
#include "mesh/file/mesh_check.h"
#include "verify/triangle_grid.h"

namespace diff {

namespace {

using written::operator-;  // of std::array, which no argument leads to
using verify::eFileTriangle;

std::string PointText(const host::Point3& p) {
    return RealText(double{p.x}) + " " + RealText(double{p.y}) + " " + RealText(double{p.z});
}

// How many triangles each material has, in the order of the names.
eBilingual MaterialsText(const eFileMesh& mesh) {
    std::map<std::string, int> counts;
    for (const eFileSubMesh& subMesh : mesh.subMeshes) {
        counts[ToUtf8(subMesh.material)] += subMesh.triangleCount;
    }
    eBilingual text;
    for (const auto& [material, count] : counts) {
        const std::string number = " (" + std::to_string(count) + ")";
        eBilingual name =
            material.empty() ? Utf8Words(ePhrase::MaterialNone) : eBilingual{material, material};
        text.AddToList(name += {number, number});
    }
    return text;
}

std::string BonesText(const eFileMesh& mesh) {
    std::vector<std::string> bones = mesh.bones;
    std::ranges::sort(bones);
    std::string text;
    for (const std::string& bone : bones) {
        text += (text.empty() ? "" : " ") + ToUtf8(bone);
    }
    return text;
}

// The parts cut the same numbers, so that vertices of one number can be compared.
bool JoinTheSame(const eFileMesh& before, const eFileMesh& after) {
    return before.vertexCount == after.vertexCount && before.indices == after.indices &&
           std::ranges::equal(before.subMeshes, after.subMeshes,
                              [](const eFileSubMesh& a, const eFileSubMesh& b) {
                                  return a.firstVertex == b.firstVertex && a.vertexCount == b.vertexCount;
                              });
}

std::vector<eFileTriangle> TrianglesOf(const eFileMesh& mesh) {
    std::vector<eFileTriangle> triangles;
    for (const eFileSubMesh& subMesh : mesh.subMeshes) {
        const std::size_t first = std::size_t{3} * subMesh.firstTriangle;
        const std::size_t end = std::min(first + std::size_t{3} * subMesh.triangleCount, mesh.indices.size());
        for (std::size_t at = first; at + 2 < end; at += 3) {
            eFileTriangle& triangle = triangles.emplace_back();
            triangle.subMesh = &subMesh;
            for (std::size_t c = 0; c < 3; ++c) {
                triangle.corners[c] = mesh.Vertex(subMesh, mesh.indices[at + c]);
            }
        }
    }
    return triangles;
}

written::eVector MiddleOf(const eFileTriangle& triangle) {
    written::eVector middle{};
    for (const eExportVertex& corner : triangle.corners) {
        for (std::size_t i = 0; i < 3; ++i) {
            middle[i] += written::Exact(corner.position)[i] / 3;
        }
    }
    return middle;
}

class eMeshComparison {
public:
    eMeshComparison(const eFileMesh& before, const eFileMesh& after, const eTolerances& tolerances)
        : before_(before), after_(after), bounds_(tolerances), vertices_(tolerances) {}

    void Compare(eChanges& changes) {
        of_ = Utf8Words(ePhrase::OfMesh, ToUtf8(before_.name));
        CompareText(ePhrase::ChangeTriangles, std::to_string(before_.indices.size() / 3),
                    std::to_string(after_.indices.size() / 3), changes);
        CompareBounds(changes);
        CompareMaterials(changes);
        CompareText(ePhrase::ChangeSkinBones, BonesText(before_), BonesText(after_), changes);
        JoinTheSame(before_, after_) ? CompareByNumber() : CompareByPlace(changes);
        vertices_.Tell(of_, changes);
    }

private:
    void CompareText(ePhrase what, const std::string& before, const std::string& after,
                     eChanges& changes) const {
        if (before != after) {
            changes.push_back(eChange::Value(of_, what, before, after));
        }
    }

    void CompareMaterials(eChanges& changes) const {
        const eBilingual before = MaterialsText(before_);
        const eBilingual after = MaterialsText(after_);
        if (before != after) {
            changes.push_back(eChange::Value(of_, Utf8Words(ePhrase::ChangeMaterials), before, after));
        }
    }

    void CompareBounds(eChanges& changes) const {
        const auto compare = [&](ePhrase what, const host::Point3& a, const host::Point3& b) {
            if (written::Length(written::Exact(a) - written::Exact(b)) > bounds_.metres) {
                changes.push_back(eChange::Value(of_, what, PointText(a), PointText(b)));
            }
        };
        compare(ePhrase::ChangeLowest, before_.bounds.pmin, after_.bounds.pmin);
        compare(ePhrase::ChangeHighest, before_.bounds.pmax, after_.bounds.pmax);
    }

    void CompareByNumber() {
        for (std::size_t part = 0; part < before_.subMeshes.size(); ++part) {
            const eFileSubMesh& old = before_.subMeshes[part];
            const eFileSubMesh& now = after_.subMeshes[part];
            for (std::size_t i = old.firstVertex; i < std::size_t{old.firstVertex} + old.vertexCount; ++i) {
                vertices_.Meet({&before_, &old, before_.Vertex(old, i)},
                               {&after_, &now, after_.Vertex(now, i)});
            }
        }
    }

    // Each triangle takes one that lies where it lies, whichever corner that begins with.
    void CompareByPlace(eChanges& changes) {
        std::vector<eFileTriangle> old = TrianglesOf(before_);
        const std::vector<eFileTriangle> now = TrianglesOf(after_);
        verify::eTriangleGrid grid(old, std::max(bounds_.metres, 1e-6) * std::numbers::sqrt3);
        int added = 0;
        for (const eFileTriangle& triangle : now) {
            bool isFound = false;
            grid.Near(MiddleOf(triangle), [&](eFileTriangle& candidate) {
                isFound = isFound || (!candidate.IsTaken() && Take(candidate, triangle));
            });
            added += isFound ? 0 : 1;
        }
        const auto removed = static_cast<int>(std::ranges::count(old, false, &eFileTriangle::IsTaken));
        TellCount(ePhrase::ChangeTrianglesGone, removed, changes);
        TellCount(ePhrase::ChangeTrianglesNew, added, changes);
    }

    bool Take(eFileTriangle& candidate, const eFileTriangle& triangle) {
        for (std::size_t turn = 0; turn < 3; ++turn) {
            const auto cornerOf = [&](std::size_t c) -> const eExportVertex& {
                return triangle.corners[(c + turn) % 3];
            };
            bool fits = candidate.subMesh->material == triangle.subMesh->material;
            for (std::size_t c = 0; c < 3; ++c) {
                fits = fits &&
                       written::LargestDifference(written::Exact(candidate.corners[c].position),
                                                  written::Exact(cornerOf(c).position)) <= bounds_.metres;
            }
            if (fits) {
                candidate.owner = 0;
                for (std::size_t c = 0; c < 3; ++c) {
                    vertices_.Meet({&before_, candidate.subMesh, candidate.corners[c]},
                                   {&after_, triangle.subMesh, cornerOf(c)});
                }
                return true;
            }
        }
        return false;
    }

    void TellCount(ePhrase what, int count, eChanges& changes) const {
        if (count > 0) {
            changes.push_back(eChange::Plain(of_, what, count));
        }
    }

    const eFileMesh& before_;
    const eFileMesh& after_;
    eTolerances bounds_;
    eVertexChanges vertices_;
    eBilingual of_;
};

// Whose ranges must not be followed; the first of several is told.
bool IsSound(const eFileMesh& mesh, eBilingual& problem) {
    const std::vector<std::string> problems = CheckMesh(mesh);
    if (!problems.empty() && problem.IsEmpty()) {
        const std::string behind = ": " + problems.front();
        problem = Utf8Words(ePhrase::OfMesh, ToUtf8(mesh.name)) += {behind, behind};
    }
    return problems.empty();
}

const eFileMesh* Find(const std::vector<eFileMesh>& meshes, const std::string& name) {
    const auto found = std::ranges::find(meshes, name, &eFileMesh::name);
    return found != meshes.end() ? &*found : nullptr;
}

}  // namespace

void CompareMeshes(std::span<const std::uint8_t> before, std::span<const std::uint8_t> after,
                   const eTolerances& tolerances, eChanges& changes, eBilingual& problem) {
    std::string broken;
    const std::optional<eMeshFileContent> old = ReadMeshFile(before, broken);
    const std::optional<eMeshFileContent> now = old ? ReadMeshFile(after, broken) : std::nullopt;
    problem = {broken, broken};
    if (!now) {
        return;
    }
    for (const eFileMesh& mesh : old->meshes) {
        const eFileMesh* const other = Find(now->meshes, mesh.name);
        if (other == nullptr) {
            changes.push_back(
                eChange::Plain(Utf8Words(ePhrase::OfMesh, ToUtf8(mesh.name)), ePhrase::ChangeRemoved));
        } else if (IsSound(mesh, problem) && IsSound(*other, problem)) {
            eMeshComparison(mesh, *other, tolerances).Compare(changes);
        }
    }
    for (const eFileMesh& mesh : now->meshes) {
        if (Find(old->meshes, mesh.name) == nullptr) {
            changes.push_back(
                eChange::Plain(Utf8Words(ePhrase::OfMesh, ToUtf8(mesh.name)), ePhrase::ChangeAdded));
        }
    }
}

}  // namespace diff
