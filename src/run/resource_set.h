#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "io/streams/stream_memory.h"
#include "run/export_material.h"

// A mesh of a folder's mesh file: its name, and where its body starts behind the table.
struct eMeshTableEntry {
    std::string name;
    std::uint32_t offset = 0;
};

// What ends up in one folder's .material and .mesh.
struct eExportResourceSet {
    std::vector<eMeshTableEntry> meshTable;
    std::unique_ptr<xIo::eMemoryStream> meshBodies;  // made when the first mesh arrives
    std::vector<eExportMaterial> materials;          // unique by exact name
};
