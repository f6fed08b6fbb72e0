#pragma once

#include "io/name.h"

// What a run writes and where. The record lives as long as its Export; between runs it is kept in the options
// file. The initial values are those of a new Export.
struct eExportOptions {
    int exportMesh = 1;       // write .mdl, .def, meshes, materials, textures
    int exportAnimation = 1;  // write anim.txt and .anm
    int optionC = 0;          // optionC and the other lettered options are stored only
    int optionD = 1;
    int optionE = 0;
    int exportIK = 1;  // write inverse kinematics data of bones
    int optionG = 1;
    int optionH = 1;
    int exportGeometry = 1;
    int optionJ = 1;
    int optionK = 0;
    int exportLightsCameras = 1;
    int optionM = 0;
    int optionN = 1;
    int optionO = 0;
    int ambientPercent = 50;  // per cent of the host's ambient colour that reaches scaledAmbient
    int optionP = 4;
    int staticFrame = 0;  // frame at which static data is evaluated; never stored
    bool reverseAnimation = false;
    bool selectedOnly = false;      // animations of selected nodes only
    bool currentRangeOnly = false;  // only animations inside the host's animation range
    eName resourceRoot{"d:/thegame/"};
    eName commonTextureSource{"d:/-projects-/-bitmaps-/"};  // where common textures lie in the artists' tree
    eName commonTextureTarget{"texture/common/"};           // game path of common textures
};
