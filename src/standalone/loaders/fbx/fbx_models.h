// What an FBX file says of its nodes and takes beside what the import library hands on.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standalone {

// A user-defined property, UTF-8.
struct eFbxProperty {
    std::string key;
    std::vector<std::string> values;  // a line each; one but for a list of texts
    bool isFlagOff = false;           // a switch that is off, an empty list: no line
};

// How the scale of the node above reaches a node: through its own rotation as matrices multiply, behind its
// rotation, or not at all.
enum class eFbxInherit { BehindRotation = 0, AsMatrices = 1, NotTheParents = 2 };

struct eFbxModel {
    std::string name;                      // UTF-8
    std::string libraryName;               // by which the import library tells it, WithOwnFbxNames sets it
    std::string_view nameInFile;           // as its bytes stand in the file, without prefix or ending
    std::vector<eFbxProperty> properties;  // in the file's order
    std::string propertyText;              // the whole text of the host's own properties, where it has one
    eFbxInherit inherit = eFbxInherit::AsMatrices;
    bool isShown = true;    // by its flag, and by a visibility that no take moves
    double visibility = 1;  // without animation
    bool hidesWithAbove = true;
    bool lostMaterials = false;         // has others than the node that it shares its geometry with
    std::vector<std::size_t> children;  // in the order of the file's connections
};

// From its time on the node is shown, or hidden.
struct eFbxShowing {
    double seconds = 0;
    bool isShown = true;
};

struct eFbxTake {
    std::string name;             // UTF-8
    std::string_view nameInFile;  // as its bytes stand in the file
    double startSeconds = 0;      // the library moves its keys from here to 0
    double endSeconds = 0;
    std::map<std::size_t, std::vector<eFbxShowing>>
        showings;  // by model; the first holds before its time too
};

struct eFbxModels {
    std::vector<eFbxModel> models;
    std::vector<std::size_t> roots;  // in the order of the file's connections
    std::vector<eFbxTake> takes;     // in the file's order
    double framesPerSecond = 0;      // 0 where the file says none
};

// Nothing where the bytes are no FBX file of a version with objects and connections. Whether the nodes form a
// tree is not looked at. Names show into the bytes.
std::optional<eFbxModels> ReadFbxModels(std::string_view bytes);

}  // namespace standalone
