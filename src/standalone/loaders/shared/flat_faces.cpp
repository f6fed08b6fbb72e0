#include <algorithm>

#include "base/ansi.h"
#include "standalone/loaders/shared/face_subset.h"
#include "standalone/loaders/shared/fit_meshes.h"

namespace standalone {
namespace {

bool HasArea(const eMeshObject& object, const host::Face& face, bool isDeformed) {
    const auto isOne = [&](std::uint32_t a, std::uint32_t b) {
        return a == b || (!isDeformed && object.mesh.verts[a] == object.mesh.verts[b]);
    };
    return !isOne(face.v[0], face.v[1]) && !isOne(face.v[1], face.v[2]) && !isOne(face.v[2], face.v[0]);
}

// The name of the first node that shows the object, UTF-8.
std::string NameOfObject(const eSceneData& scene, std::size_t object) {
    const auto shows = [&](const eNodeData& node) { return node.object == static_cast<int>(object); };
    const auto found = std::ranges::find_if(scene.nodes, shows);
    return found == scene.nodes.end() ? std::string() : ToUtf8(found->name);
}

}  // namespace

void DropFacesWithoutArea(eSceneData& scene, eImportReport& report) {
    for (std::size_t number = 0; number < scene.objects.size(); ++number) {
        eObjectData& object = scene.objects[number];
        const auto* mesh = std::get_if<eMeshObject>(&object.kind);
        if (mesh == nullptr) {
            continue;
        }
        const std::vector<host::Face>& faces = mesh->mesh.faces;
        const bool isDeformed = !mesh->vertexKeys.empty() || !object.modifiers.empty();
        const auto hasArea = [&](const host::Face& face) { return HasArea(*mesh, face, isDeformed); };
        if (std::ranges::all_of(faces, hasArea)) {
            continue;
        }
        std::vector<std::uint32_t> kept;
        for (std::uint32_t face = 0; face < faces.size(); ++face) {
            if (hasArea(faces[face])) {
                kept.push_back(face);
            }
        }
        const std::size_t lost = faces.size() - kept.size();
        report.Notice(eMessageId::ImportNoArea,
                      NameOfObject(scene, number) + " (" + std::to_string(lost) + ")");
        std::string id = object.id;
        object = kept.empty() ? eObjectData{{}, eHelperObject{}, {}} : SubsetOf(object, kept);
        object.id = std::move(id);
    }
}

}  // namespace standalone
