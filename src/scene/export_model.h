#pragma once

#include <vector>

namespace host {
class INode;
}  // namespace host

// A model of the run and the nodes below it that are no bones.
struct eExportModel {
    host::INode* root = nullptr;
    std::vector<host::INode*> bodies;
    std::vector<host::INode*> volumes;
    std::vector<host::INode*> zones;  // marked "Obstacle" or "Area"
    std::vector<host::INode*> previews;
};
