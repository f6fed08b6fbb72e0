#include "standalone/loaders/gltf/gltf_objects.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "standalone/loaders/gltf/gltf_axes.h"
#include "standalone/loaders/gltf/gltf_cameras.h"
#include "standalone/loaders/gltf/gltf_instances.h"
#include "standalone/loaders/gltf/gltf_lights.h"
#include "standalone/loaders/gltf/gltf_materials.h"
#include "standalone/loaders/gltf/gltf_nodes.h"
#include "standalone/loaders/gltf/shapes/gltf_mesh_object.h"
#include "standalone/loaders/shared/mesh_properties.h"
#include "standalone/loaders/shared/object_bounds.h"
#include "standalone/loaders/shared/placed_shape.h"
#include "standalone/loaders/shared/unique_names.h"

namespace standalone {
namespace {

class eObjectMaker {
public:
    explicit eObjectMaker(eGltfImport& ownImport)
        : import(ownImport), materials(ownImport), worlds(GltfWorldMatrices(ownImport)) {
        materials.MakeAll();
    }

    void Make(int number) {
        const tinygltf::Node& node = import.model.nodes[static_cast<std::size_t>(number)];
        const int light = GltfLightOf(node);
        bool isTaken = false;
        if (node.mesh >= 0) {
            SetMeshes(number, node.mesh);
            isTaken = true;
        }
        if (const int carrier = import.hierarchy.carriers[static_cast<std::size_t>(number)]; carrier >= 0) {
            SetCarriedMesh(number, carrier);
            isTaken = true;
        }
        if (node.camera >= 0) {
            const int record = isTaken ? AddLooking(number, "_camera") : import.NodeOf(number).record;
            SetObject(record, MakeGltfCamera(import, node.camera));
            import.cameraNodes.push_back({number, node.camera, record});
            isTaken = true;
        }
        if (light >= 0) {
            const int record = isTaken ? AddLooking(number, "_light") : import.NodeOf(number).record;
            SetObject(record, MakeGltfLight(import, number, light));
            isTaken = true;
        }
        if (!isTaken) {
            SetObject(import.NodeOf(number).record, eHelperObject{});
        }
    }

    // Objects that several nodes show need an id; the name of the mesh is one that an artist knows.
    void NameSharedObjects() {
        std::vector<int> users(import.scene.objects.size());
        for (const eNodeData& node : import.scene.nodes) {
            users[static_cast<std::size_t>(node.object)] += 1;
        }
        eUniqueNames ids;
        for (const auto& [object, mesh] : meshOfObject) {
            if (users[static_cast<std::size_t>(object)] > 1) {
                const std::string& name = import.model.meshes[static_cast<std::size_t>(mesh)].name;
                import.scene.objects[static_cast<std::size_t>(object)].id =
                    ids.Take(name.empty() ? "mesh_" + std::to_string(mesh) : import.report.Ansi(name));
            }
        }
    }

private:
    void SetObject(int record, eObjectKind kind) {
        import.scene.nodes[static_cast<std::size_t>(record)].object = AddObject({{}, std::move(kind), {}});
    }

    int AddObject(eObjectData object) {
        import.scene.objects.push_back(std::move(object));
        return static_cast<int>(import.scene.objects.size()) - 1;
    }

    // A node at the same place, with the axes that a camera or light needs.
    int AddLooking(int number, const char* ending) {
        constexpr std::array<float, 4> kNoRotation = {0, 0, 0, 1};
        const int record = AddBelow(number, ending);
        import.scene.nodes[static_cast<std::size_t>(record)].transform.parts.rotation =
            ToHostRotation(kNoRotation, {true, import.KeepsOwnAxes(number)});
        return record;
    }

    int AddBelow(int number, const std::string& ending) {
        const int record = static_cast<int>(import.scene.nodes.size());
        eNodeData below;
        eNodeData& above = import.RecordOf(number);
        below.name = above.name + ending;
        below.hidden = above.hidden;
        below.groupMember = above.groupMember;
        below.visibility = above.visibility;
        below.visibilityKeys = above.visibilityKeys;
        below.parent = import.NodeOf(number).record;
        above.children.push_back(record);
        import.scene.nodes.push_back(std::move(below));
        return record;
    }

    void SetMeshes(int number, int mesh) {
        const std::vector<ePlacement> instances = GltfInstancesOf(import, number);
        if (instances.empty()) {
            SetMesh(number, mesh, import.NodeOf(number).record);
            return;
        }
        for (std::size_t i = 0; i < instances.size(); ++i) {
            const int record = AddBelow(number, "_instance" + std::to_string(i + 1));
            eNodeData& instance = import.scene.nodes[static_cast<std::size_t>(record)];
            instance.properties = MeshLines(import.RecordOf(number).properties);
            instance.transform.parts = instances[i];
            SetMesh(number, mesh, record);
        }
        import.RecordOf(number).properties = WithoutMesh(import.RecordOf(number).properties);
        SetObject(import.NodeOf(number).record, eHelperObject{});
    }

    // The mesh of a carrier, at its place and size.
    void SetCarriedMesh(int number, int carrier) {
        import.NodeOf(carrier).shape = import.NodeOf(number).shape;
        SetMesh(carrier, import.model.nodes[static_cast<std::size_t>(carrier)].mesh,
                import.NodeOf(number).record);
        const ePlacement outer = GltfRestTransform(import, carrier).parts;
        ePlacement& offset = import.RecordOf(number).offset;
        offset.position = outer.position + offset.position * outer.scale.x;
        offset.scale = offset.scale * outer.scale.x;
    }

    // `record` is the node itself, or an instance of its mesh.
    void SetMesh(int number, int mesh, int record) {
        eNodeData& shown = import.scene.nodes[static_cast<std::size_t>(record)];
        shown.material = materials.OfMesh(mesh);
        if (import.NodeOf(number).shape != eShapeWord::None) {
            SetShape(number, mesh, record);
            return;
        }
        // What a node alone does to its mesh makes the object its own.
        const eGltfMeshUse use = GltfMeshUse(import, number, worlds);
        const std::tuple key(mesh, use.skin ? import.model.nodes[static_cast<std::size_t>(number)].skin : -1,
                             use.isOwn ? number : -1);
        const auto [entry, isNew] = objects.try_emplace(key, static_cast<int>(import.scene.objects.size()));
        shown.object = entry->second;
        if (isNew) {
            meshOfObject.emplace(AddObject(MakeGltfMeshObject(import, mesh, use)), mesh);
        }
    }

    void SetShape(int number, int mesh, int record) {
        const eObjectKind shown = MakeGltfMeshObject(import, mesh, {}).kind;
        const ePlacedShape shape = PlacedShapeOf(BoundsOfPoints(shown), import.NodeOf(number).shape);
        SetObject(record, shape.kind);
        import.scene.nodes[static_cast<std::size_t>(record)].offset = shape.offset;
    }

    eGltfImport& import;
    eGltfMaterials materials;
    std::vector<host::Matrix3> worlds;
    std::map<std::tuple<int, int, int>, int> objects;  // by mesh, skin and node
    std::map<int, int> meshOfObject;
};

}  // namespace

void MakeGltfObjects(eGltfImport& import) {
    eObjectMaker maker(import);
    for (const int number : import.hierarchy.order) {
        maker.Make(number);
        if (import.report.HasProblems()) {
            return;
        }
    }
    maker.NameSharedObjects();
}

}  // namespace standalone
