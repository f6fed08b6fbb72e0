#include "io/file_cache.h"

#include "base/diagnostics.h"
#include "base/format.h"
#include "base/global_collector.h"
#include "io/name.h"
#include "io/repository/repository.h"
#include "io/repository/repository_table.h"
#include "io/repository/zip_storage.h"
#include "io/sdl/sdl_reader.h"

namespace xIo::xRepository {
namespace {

const eModuleRegistration applicationModule({"app", LoadFileCache, Clear});

void CacheResource(const std::string& name) {
    eStorage* storage = FindStorage(name);
    if (storage == nullptr) {
        Warn(__FILE__, __LINE__, (format("Can't find file for caching: %1%") % name).Text());
    } else if (auto* entry = dynamic_cast<eZipStorage*>(storage)) {
        entry->FillCache();
    } else {
        OpenResolved(name);
    }
}

}  // namespace

void LoadFileCache() {
    xSdl::eReader reader;
    reader.Open("/set/file_cache.set");
    if (reader.PeekIs(xSdl::kTokenIdent)) {
        reader.Ident();  // the block may have a name
    }
    while (reader.PeekIs(xSdl::kTokenString)) {
        CacheResource(eName(reader.String()));
    }
    reader.SkipBlock();
}

}  // namespace xIo::xRepository
