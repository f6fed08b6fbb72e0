#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "standalone/loaders/json/json_reader.h"
#include "standalone/scene_data.h"

namespace standalone {

// What the readers of a document's sections share. Ids and node names are collected before anything refers to
// them, so every reference becomes an index where it stands.
struct eDocumentContext {
    explicit eDocumentContext(eJsonTree& tree) : json(tree) {}

    eJsonReader json;
    eSceneData scene;

    // Keys of the sections, UTF-8, alive with the tree.
    std::unordered_map<std::string_view, int> materialIds;
    std::unordered_map<std::string_view, int> objectIds;
    // Lower-case names; of several nodes the first in depth-first order.
    std::unordered_map<std::string, int> nodesByName;
    // The JSON value of each node of the scene.
    std::vector<eJsonIndex> nodeValues;
};

// A reference as an index; a missing target is reported.
bool ReadNodeReference(eDocumentContext& context, eJsonIndex value, int& node);
void ReadNodeReferences(eDocumentContext& context, eJsonIndex list, std::vector<int>& nodes);
bool ReadMaterialReference(eDocumentContext& context, eJsonIndex value, int& material);
bool ReadObjectReference(eDocumentContext& context, eJsonIndex value, int& object);

// Reports a frame whose time in ticks lies beyond what the host can count. The frame's ticks are read
// already.
void CheckFrame(eDocumentContext& context, eJsonIndex place, double frame);

}  // namespace standalone
