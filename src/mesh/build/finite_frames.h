#pragma once

#include <vector>

#include "geometry/export_vertex.h"

class Export;

// Frames of the bone's mesh with a number that no engine can draw, such as a position that grows beyond the
// range, show the mesh as it stands still instead; told once, with the first such frame. `still` holds the
// welded vertices of the first frame. Linear in the vertices of all frames.
void KeepFramesFinite(Export& run, int boneIndex, const std::vector<eExportVertex>& still);
