#include "standalone/loaders/assimp/assimp_outlines.h"

#include <algorithm>
#include <span>
#include <vector>

namespace standalone {
namespace {

constexpr unsigned kLeastCorners = 4;  // of two segments

std::span<unsigned> CornersOf(const aiFace& face) {
    return {face.mIndices, face.mNumIndices};
}

// True if each segment begins where the last one ends.
bool IsRowOfSegments(const aiMesh& mesh, const aiFace& face) {
    const std::span<unsigned> corners = CornersOf(face);
    if (corners.size() < kLeastCorners || corners.size() % 2 != 0 ||
        std::ranges::any_of(corners, [&](unsigned corner) { return corner >= mesh.mNumVertices; })) {
        return false;
    }
    for (std::size_t joint = 1; joint + 1 < corners.size(); joint += 2) {
        if (mesh.mVertices[corners[joint]] != mesh.mVertices[corners[joint + 1]]) {
            return false;
        }
    }
    return true;
}

void AddSegments(const aiFace& row, std::vector<aiFace>& faces) {
    for (std::size_t end = 0; end < row.mNumIndices; end += 2) {
        aiFace& segment = faces.emplace_back();
        segment.mNumIndices = 2;
        segment.mIndices = new unsigned[2]{row.mIndices[end], row.mIndices[end + 1]};
    }
}

void MendMesh(aiMesh& mesh) {
    const std::span<aiFace> old(mesh.mFaces, mesh.mNumFaces);
    const auto isRow = [&](const aiFace& face) { return IsRowOfSegments(mesh, face); };
    const auto isLine = [&](const aiFace& face) { return face.mNumIndices == 2 || isRow(face); };
    if (!std::ranges::all_of(old, isLine) || std::ranges::none_of(old, isRow)) {
        return;
    }
    std::vector<aiFace> faces;
    mesh.mPrimitiveTypes = 0;
    for (const aiFace& face : old) {
        if (isRow(face)) {
            AddSegments(face, faces);
        } else {
            faces.push_back(face);
        }
        mesh.mPrimitiveTypes |= AI_PRIMITIVE_TYPE_FOR_N_INDICES(faces.back().mNumIndices);
    }
    delete[] mesh.mFaces;
    mesh.mNumFaces = static_cast<unsigned>(faces.size());
    mesh.mFaces = new aiFace[faces.size()];
    std::ranges::copy(faces, mesh.mFaces);
}

}  // namespace

void MendOutlines(aiScene& scene) {
    for (aiMesh* mesh : std::span(scene.mMeshes, scene.mNumMeshes)) {
        MendMesh(*mesh);
    }
}

}  // namespace standalone
