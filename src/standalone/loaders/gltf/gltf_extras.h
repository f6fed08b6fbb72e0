#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "standalone/loaders/gltf/file/gltf_report.h"
#include "standalone/loaders/json/json_tree.h"
#include "standalone/scene_data.h"

namespace standalone {

// The primitive that a node's mesh stands for.
enum class eGltfShape { None, Box, Sphere, Cylinder };

// Reads the `extras` of a node: its state (hidden, selected, group, shape), and every other member as a line
// of property text, in the order of the file. Values that property text can't hold are told.
eGltfShape ReadNodeExtras(const eJsonTree& json, eJsonIndex node, eGltfReport& report, eNodeData& record);

// A number among the `extras` of a node, camera, light or material; true counts as 1, false as 0.
std::optional<double> ExtraNumber(const eJsonTree& json, eJsonIndex object, std::string_view key);

// A number without exponent and with as few digits as tell it: 1, 0.5.
std::string ShortNumber(double number);

}  // namespace standalone
