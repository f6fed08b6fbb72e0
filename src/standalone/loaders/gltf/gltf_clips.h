#pragma once

#include <cstddef>
#include <vector>

#include "standalone/loaders/gltf/gltf_timeline.h"

namespace standalone {

// A clip as the scene may declare it.
struct eGltfDeclaration {
    std::string name;  // of the animation, safe in property text and as a file
    int firstFrame = 0;
    int lastFrame = 0;
    std::string selection;         // name of the selection set
    std::size_t selectionSet = 0;  // its number in the scene
};

// Adds a selection set for each clip behind those of the scene, with the nodes that the clip moves.
std::vector<eGltfDeclaration> AddGltfClipSets(eGltfImport& import, const std::vector<eGltfClip>& clips);

// Declares the clips at the models of the finished scene. A model is a node with "Model", or a root for nodes
// below none; one whose properties declare no animation gets a declaration for each clip that moves a node of
// it, and the range grows to hold the clip. Selection sets that no declaration names are taken out.
void DeclareGltfClips(eSceneData& scene, const std::vector<eGltfDeclaration>& declarations);

}  // namespace standalone
