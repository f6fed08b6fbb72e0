#include "standalone/loaders/shared/bind_pose.h"

#include <algorithm>

#include "base/ansi.h"
#include "standalone/data/node_path.h"
#include "standalone/data/property_reader.h"
#include "standalone/data/world_matrices.h"

namespace standalone {
namespace {

const eSkinModifier* SkinOf(const eObjectData& object) {
    for (const eModifierKind& modifier : object.modifiers) {
        if (const auto* skin = std::get_if<eSkinModifier>(&modifier)) {
            return skin;
        }
    }
    return nullptr;
}

// True if the artist has asked for the mesh as it stands at the exported frame.
bool IsTakenAsItStands(const eNodeData& node) {
    const eUserProperties properties(node.properties);
    return properties.Find("OldSkin").has_value() || properties.Find("NoSkin").has_value();
}

// True if the matrix moves no corner of the bounds by more than a thousandth of their diagonal.
bool KeepsInPlace(const host::Matrix3& movement, const host::Box3& bounds) {
    const float tolerance = 1e-3F * Length(bounds.Width());
    for (int corner = 0; corner < 8; ++corner) {
        const host::Point3 point{(corner & 1) != 0 ? bounds.pmax.x : bounds.pmin.x,
                                 (corner & 2) != 0 ? bounds.pmax.y : bounds.pmin.y,
                                 (corner & 4) != 0 ? bounds.pmax.z : bounds.pmin.z};
        if (Length(point * movement - point) > tolerance) {
            return false;
        }
    }
    return true;
}

}  // namespace

void NoticeBindPoses(const eSceneData& scene, eImportReport& report) {
    const auto isSkinned = [](const eObjectData& object) { return SkinOf(object) != nullptr; };
    if (std::ranges::none_of(scene.objects, isSkinned)) {
        return;
    }
    eWorldMatrices world(scene);
    const host::TimeValue time = scene.firstFrame * scene.frameTicks;
    for (std::size_t node = 0; node < scene.nodes.size(); ++node) {
        const eObjectData& object = scene.objects[static_cast<std::size_t>(scene.nodes[node].object)];
        const eSkinModifier* skin = SkinOf(object);
        const auto* mesh = std::get_if<eMeshObject>(&object.kind);
        if (skin == nullptr || mesh == nullptr || mesh->mesh.verts.empty() ||
            IsTakenAsItStands(scene.nodes[node])) {
            continue;
        }
        std::vector<char> isUsed(skin->bones.size());
        for (const eSkinWeight& influence : skin->weights) {
            isUsed[static_cast<std::size_t>(influence.bone)] = 1;
        }
        const host::Box3 bounds = BoundsOf(mesh->mesh);
        const host::Matrix3 toObject = Inverse(world.At(static_cast<int>(node), time));
        bool isBound = true;
        for (std::size_t bone = 0; bone < isUsed.size() && isBound; ++bone) {
            isBound =
                isUsed[bone] == 0 ||
                KeepsInPlace(skin->bindMatrices[bone] * world.At(skin->bones[bone], time) * toObject, bounds);
        }
        if (!isBound) {
            report.Notice(eMessageId::ImportBindPose, ToUtf8(scene.nodes[node].name),
                          ToUtf8(PathOfNode(scene, node)));
        }
    }
}

}  // namespace standalone
