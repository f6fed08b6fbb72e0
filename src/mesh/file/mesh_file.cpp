#include "mesh/file/mesh_file.h"

#include "io/streams/stream_file.h"
#include "mesh/file/mesh_format.h"

void AddMeshEntry(eExportResourceSet& set, const eName& name) {
    constexpr int kFirstCapacity = 256;
    if (set.meshBodies == nullptr) {
        set.meshBodies = std::make_unique<xIo::eMemoryStream>(kFirstCapacity);
    }
    const int offset = set.meshTable.empty() ? 0 : set.meshBodies->Position();
    set.meshTable.push_back({name.Text(), static_cast<std::uint32_t>(offset)});
}

void WriteMeshes(eExportResourceSet& set, xIo::eStream& file) {
    file.Write(mesh_format::kFileTag, 4);
    file.Write(mesh_format::kTableTag, 4);
    file.WriteValue(static_cast<std::uint32_t>(set.meshTable.size()));
    for (const eMeshTableEntry& entry : set.meshTable) {
        file.WriteString(entry.name.c_str());
        file.WriteValue(entry.offset);
    }
    set.meshBodies->Seek(0, xIo::fromStart);
    file.WriteFrom(*set.meshBodies, -1);
    set.meshTable.clear();
    set.meshBodies.reset();
}

void WriteMeshFile(eExportResourceSet& set, const eName& folder) {
    if (set.meshTable.empty()) {
        return;
    }
    xIo::eFileStream file;
    file.Open(folder / ".mesh", xIo::streamWrite | xIo::streamTruncate | xIo::streamPrompt);
    WriteMeshes(set, file);
    file.Close();
}
