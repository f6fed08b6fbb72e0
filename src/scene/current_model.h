#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "host/scene_element.h"
#include "host/values.h"
#include "io/name.h"
#include "scene/export_bone.h"
#include "scene/shared_view.h"

// The model that the run stands at: its place, its skeleton, and what its nodes have given so far.
struct eCurrentModel {
    unsigned modelIndex = 0;  // in eSceneAsRead::models
    host::INode* currentRoot = nullptr;
    bool structureMode = false;  // the model carries "Structure"
    eName modelFolder;
    eName basePath;  // stem of .mdl and .def

    int boneCount = 0;
    std::vector<eName> boneNames;    // by bone number, detail levels included
    std::vector<eExportBone> bones;  // by bone number
    std::map<host::INode*, std::vector<host::Point3>, host::IdentityLess> supportPoints;  // scene units
    bool landPatch = false;  // the .def asks for "land_patch"

    std::size_t meshFrameCount = 1;  // of a mesh that is animated by frames
    int meshFrame = 0;               // the mesh frame being filled; 0 outside the frame loop
    int meshCounter = 0;             // meshes triangulated so far, for the progress title
    // Of this model or, while a common set is pending, of all that fill it.
    eSharedMeshes sharedMeshes;
};
