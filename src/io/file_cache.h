#pragma once

namespace xIo::xRepository {

// Inflates the entries of the repository that are listed in "/set/file_cache.set" and keeps them in memory.
// The start of an application does it, and its end clears the repository.
void LoadFileCache();

}  // namespace xIo::xRepository
