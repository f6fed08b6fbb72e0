// What an FBX file says of its nodes and takes beside what the import library hands on.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standalone {

// A user-defined property, UTF-8.
struct eFbxProperty {
    std::string key;
    std::string value;
    bool isFlagOff = false;  // a switch that is off: no line
};

// How the scale of the node above reaches a node: through its own rotation as matrices multiply, behind its
// rotation, or not at all.
enum class eFbxInherit { BehindRotation = 0, AsMatrices = 1, NotTheParents = 2 };

struct eFbxModel {
    std::string name;                      // UTF-8
    std::vector<eFbxProperty> properties;  // in the file's order
    std::string propertyText;              // the whole text of the host's own properties, where it has one
    eFbxInherit inherit = eFbxInherit::AsMatrices;
    bool isShown = true;
    std::vector<std::size_t> children;  // in the order of the file's connections
};

// A take begins here; the library moves its keys to 0.
struct eFbxTake {
    std::string name;
    double startSeconds = 0;
};

struct eFbxModels {
    std::vector<eFbxModel> models;
    std::vector<std::size_t> roots;  // in the order of the file's connections
    std::vector<eFbxTake> takes;     // in the file's order
};

// Nothing where the bytes are no FBX file of a version with objects and connections. Whether the nodes form a
// tree is not looked at.
std::optional<eFbxModels> ReadFbxModels(std::string_view bytes);

}  // namespace standalone
