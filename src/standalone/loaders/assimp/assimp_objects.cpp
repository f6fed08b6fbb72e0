#include "standalone/loaders/assimp/assimp_objects.h"

#include <algorithm>
#include <array>
#include <numbers>
#include <span>
#include <tuple>

#include "standalone/loaders/assimp/assimp_materials.h"
#include "standalone/loaders/assimp/assimp_mesh.h"
#include "standalone/loaders/shared/object_bounds.h"
#include "standalone/loaders/shared/placed_shape.h"
#include "standalone/loaders/shared/unique_names.h"

namespace standalone {
namespace {

// Physical brightness (watts, lumens) begins far above what artists multiply a colour by.
constexpr float kMostMultiplier = 10;
constexpr float kDegrees = static_cast<float>(180 / std::numbers::pi);

eCameraObject CameraOf(const aiCamera& source) {
    eCameraObject camera;
    if (source.mHorizontalFOV > 0) {
        camera.fov = source.mHorizontalFOV * kDegrees;
    }
    return camera;
}

eLightKind KindOf(aiLightSourceType type) {
    switch (type) {
        case aiLightSource_DIRECTIONAL:
            return eLightKind::Directional;
        case aiLightSource_SPOT:
            return eLightKind::Spot;
        case aiLightSource_AMBIENT:
            return eLightKind::Ambient;
        default:
            return eLightKind::Omni;
    }
}

// The library multiplies the colour by the brightness, in hundredths of the file's per cents.
eLightObject LightOf(const aiLight& source) {
    eLightObject light;
    light.kind = KindOf(source.mType);
    const aiColor3D color =
        source.mType == aiLightSource_AMBIENT ? source.mColorAmbient : source.mColorDiffuse;
    const float brightness = std::max({color.r, color.g, color.b, 0.0F});
    if (brightness > 0) {
        const auto part = [&](float value) { return std::max(value, 0.0F) / brightness; };
        light.color = {part(color.r), part(color.g), part(color.b)};
        light.multiplier = brightness <= kMostMultiplier ? brightness : 1;
    }
    if (light.kind == eLightKind::Spot) {
        light.hotspot = source.mAngleInnerCone * kDegrees;
        light.falloff = source.mAngleOuterCone * kDegrees;
    }
    return light;
}

// What makes two nodes show the same object: the meshes, and how their points come into the node's space.
using eObjectKey = std::tuple<std::vector<unsigned>, std::array<float, 24>>;

eObjectKey KeyOf(const eAssimpNode& node) {
    std::array<float, 24> numbers{};
    std::size_t next = 0;
    for (const host::Matrix3* matrix : {&node.geometry, &node.frame}) {
        for (int row = 0; row < 4; ++row) {
            for (int column = 0; column < 3; ++column) {
                numbers[next++] = matrix->GetRow(row)[column];
            }
        }
    }
    return {{node.shown->mMeshes, node.shown->mMeshes + node.shown->mNumMeshes}, numbers};
}

class eObjectMaker {
public:
    explicit eObjectMaker(eAssimpImport& ownImport) : import(ownImport), materials(ownImport) {}

    void Make(int number) {
        const eAssimpNode& node = import.NodeOf(number);
        if (node.shown->mNumMeshes != 0) {
            import.RecordOf(number).material = materials.OfNode(node);
            SetMesh(number);
        } else if (node.camera != nullptr) {
            import.RecordOf(number).object = Add({{}, CameraOf(*node.camera), {}});
        } else if (node.light != nullptr) {
            import.RecordOf(number).object = Add({{}, LightOf(*node.light), {}});
        } else {
            import.RecordOf(number).object = Add({{}, eHelperObject{}, {}});
        }
    }

    // Objects that several nodes show need an id.
    void NameSharedObjects() {
        std::vector<int> users(import.scene.objects.size());
        for (const eNodeData& node : import.scene.nodes) {
            users[static_cast<std::size_t>(node.object)] += 1;
        }
        eUniqueNames ids;
        for (const eNodeData& node : import.scene.nodes) {
            eObjectData& object = import.scene.objects[static_cast<std::size_t>(node.object)];
            if (users[static_cast<std::size_t>(node.object)] > 1 && object.id.empty()) {
                object.id = ids.Take(node.name);
            }
        }
    }

private:
    int Add(eObjectData object) {
        import.scene.objects.push_back(std::move(object));
        return static_cast<int>(import.scene.objects.size()) - 1;
    }

    bool IsItsOwn(const eAssimpNode& node) const {
        return std::ranges::any_of(std::span(node.shown->mMeshes, node.shown->mNumMeshes),
                                   [&](unsigned mesh) {
                                       return import.file.mMeshes[mesh]->HasBones() ||
                                              import.file.mMeshes[mesh]->mNumAnimMeshes != 0;
                                   });
    }

    void SetMesh(int number) {
        const eAssimpNode& node = import.NodeOf(number);
        if (node.shape != eShapeWord::None) {
            const ePlacedShape shape =
                PlacedShapeOf(BoundsOfPoints(MakeAssimpMeshObject(import, number).kind), node.shape);
            import.RecordOf(number).offset = shape.offset;
            import.RecordOf(number).object = Add({{}, shape.kind, {}});
            return;
        }
        if (IsItsOwn(node)) {
            import.RecordOf(number).object = Add(MakeAssimpMeshObject(import, number));
            return;
        }
        const auto [entry, isNew] =
            objects.try_emplace(KeyOf(node), static_cast<int>(import.scene.objects.size()));
        if (isNew) {
            Add(MakeAssimpMeshObject(import, number));
        }
        import.RecordOf(number).object = entry->second;
    }

    eAssimpImport& import;
    eAssimpMaterials materials;
    std::map<eObjectKey, int> objects;
};

}  // namespace

void MakeAssimpObjects(eAssimpImport& import) {
    eObjectMaker maker(import);
    for (int node = 0; node < static_cast<int>(import.nodes.size()); ++node) {
        maker.Make(node);
        if (import.report.HasProblems()) {
            return;
        }
    }
    maker.NameSharedObjects();
}

}  // namespace standalone
