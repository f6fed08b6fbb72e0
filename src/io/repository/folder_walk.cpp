#include "io/repository/folder_walk.h"

#include <algorithm>
#include <optional>

#include "io/name.h"
#include "io/repository/part_name.h"
#include "platform/folder.h"

namespace xIo {
namespace {

class eWalk {
public:
    eWalk(const std::vector<std::string>& excludedFolders,
          const std::function<void(const eWalkedFile&)>& visitor)
        : excluded(excludedFolders), visit(visitor) {}

    // Both end in a slash.
    void Enter(const std::string& name, const std::string& path) {
        const auto identity = platform::FolderIdentity(path);
        if (std::ranges::find(above, identity) != above.end()) {
            return;
        }
        above.push_back(identity);
        std::vector<platform::eFolderEntry> entries;
        std::vector<std::string> nameless;
        const platform::eIoStatus status =
            platform::ListFolder(path, entries, platform::ePathForm::Resource, &nameless);
        if (!status.IsOk()) {
            problems += path + ": " + status.Text() + "\n";
        }
        if (!nameless.empty()) {
            problems += path + ": a file has a name that code page 1251 can't hold\n";
        }
        std::ranges::stable_sort(entries, eMountOrder{}, &platform::eFolderEntry::name);
        for (const platform::eFolderEntry& entry : entries) {
            const std::string own = eName(entry.name).Text();
            if (!entry.isFolder) {
                visit({name + own, path + own, entry.size});
            } else if (std::ranges::find(excluded, own) == excluded.end()) {
                Enter(name + own + '/', path + own + '/');
            }
        }
        above.pop_back();
    }

    const std::string& Problems() const { return problems; }

private:
    const std::vector<std::string>& excluded;
    const std::function<void(const eWalkedFile&)>& visit;
    std::string problems;
    std::vector<std::optional<std::uint64_t>> above;  // identities of the folders that the walk stands in
};

std::string WithSlash(const std::string& text) {
    return text.ends_with('/') ? text : text + '/';
}

}  // namespace

std::string WalkFolder(const std::string& prefix, const std::string& folder,
                       const std::vector<std::string>& excludedFolders,
                       const std::function<void(const eWalkedFile&)>& visit) {
    eWalk walk(excludedFolders, visit);
    walk.Enter(WithSlash(prefix), WithSlash(folder));
    return walk.Problems();
}

}  // namespace xIo
