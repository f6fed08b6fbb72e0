#include "answers/left_over.h"

#include <set>
#include <string_view>

#include "base/ansi.h"
#include "io/streams/temporary_name.h"
#include "platform/folder.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"
#include "run/file_kinds.h"

namespace answers {

namespace {

bool IsOfKilledRun(std::string_view name) {
    constexpr std::string_view end = xIo::temporarySuffix;
    return name.ends_with(end) && IsOfExport(name.substr(0, name.size() - end.size()));
}

// A kind that the options switch off is written by other runs.
bool IsOfTheRun(std::string name, const eExportOptions& options) {
    name = LowerAnsi(name);
    return (options.exportMesh != 0 && options.exportGeometry != 0 && IsOfKind(name, kMeshKinds)) ||
           (options.exportAnimation != 0 && !options.currentRangeOnly && IsOfKind(name, kAnimationKinds));
}

// Textures that models share lie elsewhere: what one scene does not need another one may.
std::set<std::string> ModelFolders(const eRunJournal& journal) {
    std::set<std::string> folders;
    for (const auto& [path, note] : journal.files) {
        if (note.rule == eFileRule::EveryRun || note.rule == eFileRule::IsThere) {
            folders.insert(platform::NativeParent(platform::DiskPath(path.Text())));
        }
    }
    return folders;
}

}  // namespace

std::vector<eLeftOverFile> FindLeftOver(const eRunJournal& journal, const eExportOptions& options) {
    std::set<std::string> known;
    for (const auto& [path, note] : journal.files) {
        known.insert(platform::DiskPath(path.Text()));
    }
    std::vector<eLeftOverFile> found;
    std::vector<platform::eFolderEntry> entries;
    for (const std::string& folder : ModelFolders(journal)) {
        platform::ListFolder(folder, entries, platform::ePathForm::Native);
        for (const platform::eFolderEntry& entry : entries) {
            std::string path = platform::NativeJoin(folder, ToUtf8(entry.name));
            const bool isOfKilledRun = IsOfKilledRun(entry.name);
            if (!entry.isFolder && (isOfKilledRun || IsOfTheRun(entry.name, options)) &&
                !known.contains(path)) {
                found.push_back({std::move(path), entry.size, isOfKilledRun});
            }
        }
    }
    return found;
}

}  // namespace answers
