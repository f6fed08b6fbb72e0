#pragma once

#include <vector>

#include "host/values.h"
#include "scene/export_model.h"
#include "scene/instance_map.h"
#include "scene/lod_siblings.h"
#include "scene/mesh_views.h"
#include "scene/scene_lights.h"

// What the run has read of the scene: the models and lights at its start, the rest when it was first asked
// for, so that it is not read again for each node.
struct eSceneAsRead {
    std::vector<eExportModel> models;  // in export order
    eSceneLights sceneLights;
    host::Color sceneAmbient;
    host::Color scaledAmbient;  // sceneAmbient times ambientPercent / 100

    eLodIndex lodIndex;
    eInstanceMap instances;
    eMeshViews meshViews;
    std::vector<host::INode*> numberedNodes;  // the nodes that have an Export::eRenderData
};
