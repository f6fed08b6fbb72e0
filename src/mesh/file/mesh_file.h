#pragma once

#include "io/name.h"
#include "io/streams/stream.h"
#include "run/resource_set.h"

// Announces a mesh whose body is written next. Makes the set's stream of bodies at the first mesh.
void AddMeshEntry(eExportResourceSet& set, const eName& name);

// Writes the table and all bodies of a set that has meshes, and empties the set.
void WriteMeshes(eExportResourceSet& set, xIo::eStream& file);

// Writes ".mesh" in the folder: the table and all bodies of the set. Nothing to do for a set without meshes;
// an older file stays then.
void WriteMeshFile(eExportResourceSet& set, const eName& folder);
