#pragma once

#include "geometry/export_vertex.h"

// True if every number of the vertex is one that an engine can draw.
bool IsFinite(const eExportVertex& vertex);
