#include "mesh/mesh_file.h"

void AddMeshEntry(eExportResourceSet& set, const eName& name) {
    constexpr int kFirstCapacity = 256;
    if (set.meshBodies == nullptr) {
        set.meshBodies = std::make_unique<xIo::eMemoryStream>(kFirstCapacity);
    }
    const int offset = set.meshTable.empty() ? 0 : set.meshBodies->Position();
    set.meshTable.push_back({name.Text(), static_cast<std::uint32_t>(offset)});
}

void WriteMeshFile(eExportResourceSet&, const eName&) {}
