#include "answers/manifest.h"

#include <algorithm>

#include "answers/file_nodes.h"
#include "answers/file_reason.h"
#include "base/ansi.h"
#include "platform/path_lookup.h"

namespace answers {

namespace {

std::string BelowRoot(const std::string& path, const std::string& root) {
    return path.starts_with(root + "/") ? path.substr(root.size() + 1) : path;
}

std::string SourceOf(const eFileNote& note) {
    return note.source.empty() ? std::string() : platform::DiskPath(note.source);
}

// Pictures that are the one source of some file.
std::set<std::string> PicturesOf(const eRunJournal& journal) {
    std::set<std::string> pictures;
    for (const auto& [path, note] : journal.files) {
        pictures.insert(SourceOf(note));
    }
    return pictures;
}

// A map without a file of its own may mix any pictures.
bool IsFedBy(const eFileNote& note, const std::string& source, const std::set<std::string>& pictures) {
    return !pictures.contains(source) || source == SourceOf(note) || note.rule == eFileRule::Procedural;
}

std::vector<std::string> NamesOf(const std::vector<const host::INode*>& nodes) {
    std::vector<std::string> names;
    std::ranges::transform(nodes, std::back_inserter(names),
                           [](const host::INode* node) { return ToUtf8(node->GetName()); });
    return names;
}

std::vector<std::string> MaterialsOf(const eFileNote& note) {
    std::vector<std::string> materials;
    for (const std::string& material : note.materials) {
        if (std::ranges::find(materials, ToUtf8(material)) == materials.end()) {
            materials.push_back(ToUtf8(material));
        }
    }
    return materials;
}

void AddFile(eManifest& manifest, const eRunJournal& journal, const eName& path, const eFileNote& note,
             const std::set<std::string>& pictures) {
    const std::string native = platform::DiskPath(path.Text());
    const std::optional<eContentMark> content = MarkOf(native);
    if (!content) {
        return;  // removed, or refused by the disk, which has been told
    }
    eManifestFile& file = manifest.files.emplace_back();
    file.path = BelowRoot(native, manifest.root);
    file.content = *content;
    file.rule = RuleWord(note.rule);
    file.models = NamesOf(note.models);
    file.nodes = NamesOf(NodesOf(journal, path, note));
    file.materials = MaterialsOf(note);
    file.animation = ToUtf8(note.animation);
    for (const eManifestSource& source : manifest.sources) {
        if (IsFedBy(note, source.path, pictures)) {
            file.sources.push_back(source.path);
        }
    }
}

}  // namespace

eManifest MakeManifest(const Export& run, const eRunJournal& journal, const std::set<std::string>& sources,
                       const std::set<std::string>& missing) {
    eManifest manifest;
    manifest.root = platform::DiskPath(run.options.resourceRoot.Text());
    manifest.missing.assign(missing.begin(), missing.end());
    for (const std::string& source : sources) {
        if (const std::optional<eContentMark> content = MarkOf(source)) {
            manifest.sources.push_back({source, *content});
        }
    }
    const std::set<std::string> pictures = PicturesOf(journal);
    for (const auto& [path, note] : journal.files) {
        AddFile(manifest, journal, path, note, pictures);
    }
    std::ranges::sort(manifest.files, {}, &eManifestFile::path);
    return manifest;
}

}  // namespace answers
