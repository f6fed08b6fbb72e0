#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "standalone/loaders/json/json_tree.h"
#include "standalone/loaders/shared/import_report.h"
#include "standalone/loaders/shared/node_state.h"
#include "standalone/scene_data.h"

namespace standalone {

// Reads the `extras` of a node: its state (hidden, selected, group, shape), and every other member as a line
// of property text, in the order of the file. Values that property text can't hold are told.
eShapeWord ReadNodeExtras(const eJsonTree& json, eJsonIndex node, eImportReport& report, eNodeData& record);

// A number among the `extras` of a node, camera, light or material; true counts as 1, false as 0.
std::optional<double> ExtraNumber(const eJsonTree& json, eJsonIndex object, std::string_view key);

}  // namespace standalone
