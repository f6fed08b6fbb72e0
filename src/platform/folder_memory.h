// What a run may remember of the folders that it works in.
#pragma once

namespace platform {

// From here on, or no longer. The look-up of paths (path_lookup.h) reads the names of a folder again for each
// name that the folder lacks; a run that makes many files in one folder remembers them instead. What this
// module makes, renames and removes is followed, and what others do is seen by the time of the folder.
void RememberFolders(bool remembers);

}  // namespace platform
