// Properties for scenes that have none: a text beside the scene.
//
//   [tank/hull]                  a node by its path from the root, or by its name: every node of that name
//   Poly                         a line of property text; it takes the place of the node's lines of that key
//   Layer=2
//   [=turret]                    the whole text of the node is replaced
//   IKType=revolute
//   [/]                          the scene
//   host.selection.all=tank,hull a named selection set
#pragma once

#include <string>
#include <string_view>

#include "standalone/loaders/shared/import_report.h"
#include "standalone/scene_data.h"

namespace standalone {

// Gives the nodes of the scene the properties of the text, UTF-8. Nodes that the scene lacks are told with
// the nearest names that it has; a line in front of the first heading is a problem.
void ApplyPropertySidecar(std::string_view utf8, eSceneData& scene, eImportReport& report);

// The properties of all nodes of the scene as such a text, UTF-8: something to start from.
std::string PropertySidecarOf(const eSceneData& scene);

}  // namespace standalone
