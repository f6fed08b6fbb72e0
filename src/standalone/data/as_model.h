#pragma once

#include <string>

#include "standalone/scene_data.h"

namespace standalone {

// Makes a model of a scene without properties: all roots that have neither "Model" nor "XModel" are gathered
// under one new root with `Model=modelPath`, and every node with geometry below it gets "Poly". The new root
// is the first root and bears the last part of the path as its name. A scene in which every root has one of
// the two stays as it is.
void GatherAsModel(eSceneData& scene, const std::string& modelPath);

// Gives names that are equal once cleaned for the output the endings "_2", "_3", in the order of the nodes.
// A model with two bones of one name would not be exported.
void MakeNamesUnique(eSceneData& scene);

}  // namespace standalone
