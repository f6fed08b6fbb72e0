#pragma once

#include <vector>

#include "geometry/export_vertex.h"
#include "io/streams/stream.h"
#include "mesh/strips/renumber.h"
#include "mesh/strips/sub_mesh.h"

class Export;
struct eExportBone;

// Everything that a body of the mesh file is made of.
struct eMeshBody {
    host::Box3 bounds;  // of all positions; metres, bone space
    bool skinned = false;
    VertexFormat format = 0;  // of the largest vertex
    VertexFormat absent = 0;  // channels that no vertex of the mesh has in the file
    const eExportBone& bone;  // its skin bones and palettes
    const eSubMeshes& subMeshes;
    const std::vector<eExportVertex>& welded;
    const eFinalMesh& mesh;  // which of them, and in which order
};

// Appends the body to the stream (mesh_format.h). The run gives the prefix of the material names.
void WriteMeshBody(const Export& run, xIo::eStream& stream, const eMeshBody& body);
