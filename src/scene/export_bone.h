#pragma once

#include <vector>

#include "geometry/export_mesh.h"
#include "host/values.h"

namespace host {
class INode;
}  // namespace host

enum eIkType { kIkNone = 0, kIkRevolute = 1, kIkPrizmatic = 2, kIkSocket = 3 };

// One slot of Export::bones, addressed by a bone's number.
struct eExportBone {
    eExportMesh mesh;             // of a written one the faces have gone, and the frames behind the first
    host::Box3 box;               // bounds of the positions of the first mesh frame; metres, bone space
    host::INode* node = nullptr;  // the bone's own node, also where another node has filled the slot
    host::Matrix3 matrix;         // world to the space in which the mesh is lit
    host::Point3 pivot;           // lower corner of the bounds; metres
    int ikType = kIkNone;
    int hasMesh = 0;          // the bone's view is a mesh; 0: it is only a pivot
    bool commonMesh = false;  // the bone takes part in a merged mesh

    std::vector<eBonePalette> palettes;
    bool colorsAllWhite = false;
    int bonesPerVertex = 0;  // 0, 2 or 3; never 1
    int vertexCount = 0;     // vertices of the mesh as written
    bool isWritten = false;  // WriteMesh has come to an end for it, whatever the result
    bool isRefused = false;  // why its own node adds no faces has been told
};
