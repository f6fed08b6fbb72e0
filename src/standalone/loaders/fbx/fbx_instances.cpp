#include "standalone/loaders/fbx/fbx_instances.h"

namespace standalone {
namespace {

enum class eThing { Geometry, Material };

}  // namespace

void ReadFbxInstances(const eFbxRecord& objects, const eFbxRecord& connections, const eFbxNumbers& numbers,
                      eFbxModels& file) {
    std::unordered_map<std::int64_t, eThing> things;
    for (const eFbxRecord& record : objects.children) {
        if (record.name == "Geometry" || record.name == "Material") {
            things.try_emplace(record.Whole(0),
                               record.name == "Geometry" ? eThing::Geometry : eThing::Material);
        }
    }
    std::vector<std::vector<std::int64_t>> materials(file.models.size());
    std::unordered_map<std::int64_t, std::vector<std::size_t>> users;  // models by geometry
    for (const eFbxRecord& link : connections.children) {
        const auto thing = things.find(link.Whole(1));
        const auto model = numbers.models.find(link.Whole(2));
        if (link.Text(0) != "OO" || thing == things.end() || model == numbers.models.end()) {
            continue;
        }
        if (thing->second == eThing::Material) {
            materials[model->second].push_back(thing->first);
        } else {
            users[thing->first].push_back(model->second);
        }
    }
    for (const auto& [geometry, models] : users) {
        for (const std::size_t model : models) {
            if (materials[model] != materials[models.front()]) {
                file.models[model].lostMaterials = true;
            }
        }
    }
}

}  // namespace standalone
