#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "host/material.h"
#include "standalone/data/world_matrices.h"
#include "standalone/objects/hold.h"
#include "standalone/objects/recent_meshes.h"
#include "standalone/objects/scene_node.h"
#include "standalone/objects/scene_object.h"
#include "standalone/pictures/image_store.h"
#include "standalone/scene_data.h"

namespace standalone {

// The records of a scene with the elements that answer from them. Everything refers to everything, so the
// scene stays where it was made.
class eScene {
public:
    explicit eScene(eSceneData sceneData);
    eScene(const eScene&) = delete;
    eScene& operator=(const eScene&) = delete;

    eSceneNode& Root() { return *root; }
    // Null for -1, the number that stands for none.
    eSceneNode* Node(int number);
    eSceneObject* Object(int number);
    host::Mtl* Material(int number);
    host::Texmap* Map(int number);

    double FrameOf(host::TimeValue time) const { return static_cast<double>(time) / data.frameTicks; }
    host::TimeValue TimeOf(double frame) const;

    eSceneData data;  // without the keys of the transforms, which `world` holds in its own way
    eHold hold;
    eWorldMatrices world;
    eRecentMeshes recentMeshes;
    eImageStore images;

private:
    eNodeData rootData;
    std::vector<std::unique_ptr<host::Texmap>> maps;
    std::vector<std::unique_ptr<host::Mtl>> materials;
    std::vector<std::unique_ptr<eSceneObject>> objects;
    std::deque<eSceneNode> nodes;
    std::unique_ptr<eSceneNode> root;
};

}  // namespace standalone
