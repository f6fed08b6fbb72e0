#pragma once

#include <string>
#include <vector>

#include "mesh/file/mesh_reader.h"

// What is wrong with a mesh of a file that was read whole: ranges that overlap or leave their lists, formats
// larger than the stride, palettes that name no bone, numbers that are not finite, normals that are
// not of unit length, positions out of bounds.
// Each with the byte offset; none for a mesh that the engine can take. Linear in the file.
std::vector<std::string> CheckMesh(const eFileMesh& mesh);
