#pragma once

#include <string>

#include "mesh/strips/mesh_order.h"
#include "platform/file_events.h"

namespace cli {

// Lines on standard error, as the messages of a run look; text in UTF-8.
void TellError(const std::string& text);
void TellWarning(const std::string& text);

// A line on standard output for a file of the run.
void TellFile(platform::eFileAction action, const std::string& path);

// A line on standard output for what the order for the vertex cache has done for a mesh.
void TellMeshOrder(const eMeshOrder& order);

// The word for what happened to a file.
const char* ActionWord(platform::eFileAction action);

}  // namespace cli
