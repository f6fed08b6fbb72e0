#include "export/deployment.h"

#include <limits>

#include "messages/tell.h"
#include "platform/file.h"
#include "platform/file_time.h"

namespace {

struct eDeployedFile {
    const char* name;
    bool isStrict;  // nothing may be exported with an older one
};

constexpr eDeployedFile kDeployedFiles[] = {{"ZyrExport2010_KSR.dle", false},
                                            {"SorrelMtl2010_KSR.dlt", true}};
constexpr const char* kReferenceFolder = "T:\\TOOLS\\3DSMAX\\";

// A file that can't be opened is older than any other: nobody could install it, or load it.
std::int64_t WriteTime(const std::string& path) {
    constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::min();
    platform::eFile file;
    const bool isThere = file.Open(path, platform::eFileAccess::Read).IsOk();
    return isThere ? platform::LastWriteTime(path).value_or(kNever) : kNever;
}

void TellOutdated(const eDeployedFile& file, void* parent) {
    Tell(parent, file.isStrict ? eMessageId::DeploymentOutdated : eMessageId::DeploymentOld,
         {.file = file.name}, file.name);
}

}  // namespace

bool CheckDeployment(const std::string& pluginFolder, void* parent) {
    bool mayExport = true;
    for (const eDeployedFile& file : kDeployedFiles) {
        if (WriteTime(std::string(kReferenceFolder) + file.name) > WriteTime(pluginFolder + file.name)) {
            TellOutdated(file, parent);
            mayExport = mayExport && !file.isStrict;
        }
    }
    return mayExport;
}
