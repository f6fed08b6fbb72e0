#include "gltf/model_files.h"

#include <algorithm>

#include "base/ansi.h"
#include "inspect/sdl_tree.h"
#include "mesh/file/mesh_check.h"
#include "messages/utf8_words.h"
#include "platform/folder.h"

namespace gltf {

namespace {

// The files of a folder with that ending, in byte order.
std::vector<std::string> FilesIn(const eName& folder, std::string_view ending) {
    std::vector<platform::eFolderEntry> entries;
    platform::ListFolder(folder.Text(), entries);
    std::vector<std::string> names;
    for (const platform::eFolderEntry& entry : entries) {
        if (!entry.isFolder && eName(entry.name).Text().ends_with(ending)) {
            names.push_back(entry.name);
        }
    }
    return names;
}

std::string Shown(const eName& path) {
    return platform::DiskPath(path.Text());
}

// The one model of a folder, or the file itself; empty with the reason in `problem`.
eName ModelAt(const eName& place, eBilingual& problem) {
    if (!platform::Exists(place.Text())) {
        problem = Utf8Words(ePhrase::PathNoFolder, Shown(place));
        return {};
    }
    if (!platform::IsFolder(place.Text())) {
        return place;
    }
    const std::vector<std::string> models = FilesIn(place, ".mdl");
    if (models.size() == 1) {
        return place / eName(models.front());
    }
    std::string list;
    for (const std::string& model : models) {
        list += " " + ToUtf8(model);
    }
    problem = Utf8Words(models.empty() ? ePhrase::ModelNone : ePhrase::ModelSeveral, Shown(place), list);
    return {};
}

class eModelReader {
public:
    explicit eModelReader(eBilingual& problem) : problem_(problem) {}

    std::optional<eModelFiles> Read(const eName& model) {
        files_.folder = model.Part(eName::Folder);
        files_.name = model.Part(eName::Title);
        const bool isWhole = ReadModel(model) && ReadEntity(model) && ReadMeshes() && ReadClips();
        return isWhole ? std::optional(std::move(files_)) : std::nullopt;
    }

private:
    bool Fault(const eName& file, const eBilingual& what) {
        problem_ = what.At(Shown(file));
        return false;
    }
    bool Fault(const eName& file, const std::string& what) { return Fault(file, eBilingual{what, what}); }

    bool ReadModel(const eName& file) {
        files_.model = written::ReadWrittenModel(file);
        if (!files_.model.problem.empty()) {
            return Fault(file, files_.model.problem);
        }
        return !files_.model.bones.empty() || Fault(file, Utf8Words(ePhrase::ModelBoneless));
    }

    bool ReadEntity(const eName& model) {
        const eName file = eName(model.Part(eName::WithoutExtension)).Append(".def");
        const auto content = written::ReadWritten(file);
        std::string problem;
        if (content) {
            files_.entity =
                inspect::ReadSdlTree(file.Text(), std::string(content->begin(), content->end()), problem);
        }
        return problem.empty() || Fault(file, problem);
    }

    bool ReadMeshes() {
        for (const written::eWrittenBone& bone : files_.model.bones) {
            for (const std::string& view : bone.views) {
                const written::ePlacedName place = written::Resolve(files_.folder, view);
                if (!ReadMeshesIn(place.folder)) {
                    return false;
                }
                if (files_.MeshOf(view) == nullptr) {
                    files_.warnings.push_back(Utf8Words(ePhrase::LacksMesh, ToUtf8(bone.name), ToUtf8(view)));
                }
            }
        }
        return true;
    }

    bool ReadMeshesIn(const eName& folder) {
        const auto [entry, isNew] = files_.meshes.try_emplace(folder);
        const eName path = folder / ".mesh";
        std::optional<platform::eFileContent> bytes = isNew ? written::ReadWritten(path) : std::nullopt;
        if (!bytes) {
            return true;
        }
        entry->second = std::make_unique<eMeshFile>();
        eMeshFile& file = *entry->second;
        file.bytes = std::move(*bytes);
        std::string problem;
        std::optional<eMeshFileContent> content = ReadMeshFile(file.bytes, problem);
        if (!content) {
            return Fault(path, problem);
        }
        file.content = std::move(*content);
        for (const eFileMesh& mesh : file.content.meshes) {
            if (const std::vector<std::string> problems = CheckMesh(mesh); !problems.empty()) {
                return Fault(path, Utf8Words(ePhrase::ModelBrokenMesh, ToUtf8(mesh.name), problems.front()));
            }
        }
        return true;
    }

    bool ReadClips() {
        for (const std::string& name : FilesIn(files_.folder, ".anm")) {
            const eName path = files_.folder / eName(name);
            std::optional<platform::eFileContent> bytes = written::ReadWritten(path);
            if (!bytes) {
                return Fault(path, Utf8Words(ePhrase::PathNotRead));
            }
            std::string problem;
            std::optional<eAnimation> clip = ReadAnimation(*bytes, problem);
            if (!clip) {
                return Fault(path, problem);
            }
            files_.clips.push_back({.name = eName(name).Part(eName::Title),
                                    .bytes = std::move(*bytes),
                                    .played = written::ePlayedClip(std::move(*clip))});
        }
        return true;
    }

    eBilingual& problem_;
    eModelFiles files_;
};

}  // namespace

const eFileMesh* eModelFiles::MeshOf(const std::string& view) const {
    const written::ePlacedName place = written::Resolve(folder, view);
    const auto file = meshes.find(place.folder);
    if (file == meshes.end() || !file->second) {
        return nullptr;
    }
    const std::vector<eFileMesh>& all = file->second->content.meshes;
    const auto mesh = std::ranges::find(all, place.name, &eFileMesh::name);
    return mesh != all.end() ? &*mesh : nullptr;
}

std::optional<eModelFiles> ReadModelFiles(const eName& place, eBilingual& problem) {
    const eName model = ModelAt(place, problem);
    return model.IsEmpty() ? std::nullopt : eModelReader(problem).Read(model);
}

}  // namespace gltf
