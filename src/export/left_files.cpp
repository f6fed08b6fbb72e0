#include "export/left_files.h"

#include <string>
#include <string_view>

#include "export/model_locks.h"
#include "io/streams/temporary_name.h"
#include "material/run_materials.h"
#include "platform/file.h"
#include "platform/folder.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"
#include "platform/user.h"
#include "run/export.h"
#include "run/file_kinds.h"

namespace {

// `isLeft` gets the name without its last end. What is under way stands under its final name for the run.
void RemoveFrom(const std::string& folder, bool (*isLeft)(std::string_view)) {
    constexpr platform::ePathForm native = platform::ePathForm::Native;
    constexpr std::string_view end = xIo::temporarySuffix;
    for (const std::string& name : platform::NamesIn(folder)) {
        const std::string path = platform::NativeJoin(folder, name);
        if (name.ends_with(end) && isLeft(std::string_view(name).substr(0, name.size() - end.size())) &&
            platform::Exists(path, native)) {
            platform::DiscardFile(path, native);
        }
    }
}

}  // namespace

void RemoveLeftFiles(const Export& run, const eModelLocks& locks) {
    for (const std::string& folder : locks.OlderFolders()) {
        RemoveFrom(folder, IsOfExport);
    }
    for (const std::string& folder : run.materials->sharedFolders) {
        RemoveFrom(platform::DiskPath(folder), platform::EndsInEndedProcess);
    }
}
