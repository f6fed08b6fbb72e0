#include "standalone/objects/scene.h"

#include <cmath>
#include <utility>

#include "standalone/objects/mtl.h"
#include "standalone/objects/texmap.h"

namespace standalone {

namespace {

eNodeData RootData(const eSceneData& data) {
    eNodeData root;
    root.name = "Scene Root";
    root.children = data.roots;
    return root;
}

}  // namespace

eScene::eScene(eSceneData sceneData) : data(std::move(sceneData)), world(data), rootData(RootData(data)) {
    for (eNodeData& node : data.nodes) {
        std::vector<eTransformKey>().swap(node.keys);
    }
    for (std::size_t i = 0; i < data.maps.size(); ++i) {
        maps.push_back(MakeTexmap(*this, i, data.maps[i]));
    }
    for (std::size_t i = 0; i < data.materials.size(); ++i) {
        materials.push_back(MakeMtl(*this, i, data.materials[i]));
    }
    objects.reserve(data.objects.size());
    for (std::size_t i = 0; i < data.objects.size(); ++i) {
        objects.push_back(std::make_unique<eSceneObject>(*this, data.objects[i], i));
    }
    root = std::make_unique<eSceneNode>(*this, rootData, -1);
    for (std::size_t i = 0; i < data.nodes.size(); ++i) {
        nodes.emplace_back(*this, data.nodes[i], static_cast<int>(i));
    }
}

eSceneNode* eScene::Node(int number) {
    return number < 0 ? nullptr : &nodes[static_cast<std::size_t>(number)];
}

eSceneObject* eScene::Object(int number) {
    return number < 0 ? nullptr : objects[static_cast<std::size_t>(number)].get();
}

host::Mtl* eScene::Material(int number) {
    return number < 0 ? nullptr : materials[static_cast<std::size_t>(number)].get();
}

host::Texmap* eScene::Map(int number) {
    return number < 0 ? nullptr : maps[static_cast<std::size_t>(number)].get();
}

host::TimeValue eScene::TimeOf(double frame) const {
    return static_cast<host::TimeValue>(std::lround(frame * data.frameTicks));
}

}  // namespace standalone
