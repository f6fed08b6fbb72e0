#include "verify/written_files.h"

#include <algorithm>

namespace verify {

eWrittenMeshes::eFile& eWrittenMeshes::FileIn(const eName& folder) {
    const auto [entry, isNew] = files_.try_emplace(folder);
    eFile& file = entry->second;
    if (!isNew) {
        return file;
    }
    std::optional<platform::eFileContent> bytes = ReadWritten(folder / ".mesh");
    if (!bytes) {
        file.problem = "there is no file .mesh that can be read";
        return file;
    }
    file.bytes = std::move(*bytes);
    if (std::optional<eMeshFileContent> content = ReadMeshFile(file.bytes, file.problem)) {
        file.content = std::move(*content);
    }
    return file;
}

const eFileMesh* eWrittenMeshes::Take(const eName& folder, const std::string& name) {
    eFile& file = FileIn(folder);
    for (std::size_t i = 0; i < file.content.meshes.size(); ++i) {
        if (file.content.meshes[i].name == name && file.taken.insert(i).second) {
            return &file.content.meshes[i];
        }
    }
    return nullptr;
}

bool eWrittenMeshes::Has(const eName& folder, const std::string& name) {
    const std::vector<eFileMesh>& meshes = FileIn(folder).content.meshes;
    return std::ranges::find(meshes, name, &eFileMesh::name) != meshes.end();
}

std::vector<std::string> eWrittenMeshes::NotTaken(const eName& folder) {
    eFile& file = FileIn(folder);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < file.content.meshes.size(); ++i) {
        if (!file.taken.contains(i)) {
            names.push_back(file.content.meshes[i].name);
        }
    }
    return names;
}

}  // namespace verify
