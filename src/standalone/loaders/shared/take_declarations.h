#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "standalone/scene_data.h"

namespace standalone {

// A take of a file on the scene's timeline.
struct eTake {
    std::string name;  // UTF-8
    int number = 0;    // in the file
    int firstFrame = 0;
    int lastFrame = 0;
    std::vector<int> moved;  // nodes of the scene
};

// A take as the scene may declare it.
struct eDeclaration {
    std::string name;  // of the animation, safe in property text and as a file
    int firstFrame = 0;
    int lastFrame = 0;
    std::string selection;         // name of the selection set
    std::size_t selectionSet = 0;  // its number in the scene
};

// Adds a selection set for each take behind those of the scene, with the nodes that the take moves.
std::vector<eDeclaration> AddTakeSets(eSceneData& scene, const std::vector<eTake>& takes);

// Declares the takes at the models of the finished scene. A model is a node with "Model", or a root for nodes
// below none; one whose properties declare no animation gets a declaration for each take that moves a node of
// it, and the range grows to hold the take. Selection sets that no declaration names are taken out.
void DeclareTakes(eSceneData& scene, const std::vector<eDeclaration>& declarations);

}  // namespace standalone
