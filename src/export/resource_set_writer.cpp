#include "export/resource_set_writer.h"

#include "material/material_file.h"
#include "mesh/file/mesh_file.h"
#include "scene/run_journal.h"

namespace {

void NoteFiles(Export& run, const eExportResourceSet& set, const eName& folder) {
    eFileNote* const materials =
        set.materials.empty() ? nullptr : NoteFile(run, folder / ".material", eFileRule::EveryRun);
    for (std::size_t index = 0; materials != nullptr && index < set.materials.size(); ++index) {
        materials->materials.push_back(set.materials[index].name);
    }
    eFileNote* const meshes =
        set.meshTable.empty() ? nullptr : NoteFile(run, folder / ".mesh", eFileRule::EveryRun);
    for (std::size_t index = 0; meshes != nullptr && index < set.meshTable.size(); ++index) {
        meshes->meshes.push_back(set.meshTable[index].name);
    }
}

}  // namespace

void WriteResourceSet(Export& run, eExportResourceSet& set, const eName& folder) {
    NoteFiles(run, set, folder);
    WriteMaterialFile(set, folder);
    WriteMeshFile(set, folder);
    set = {};
}
