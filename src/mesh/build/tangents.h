#pragma once

class Export;
struct eExportBone;

// Fills the tangents of every frame of a merged mesh, else of the first frame, from positions, corner normals
// and the first map coordinates: per face with a bump map its own basis, no sharing between faces. A mesh
// without bump maps gets none. A face without area in map space has no direction: its tangents are any unit
// vectors at right angles to its normals, and the artist is told.
void ComputeTangents(Export& run, eExportBone& bone);
