// What happens to files, for whoever keeps a record of the run.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/path_lookup.h"

namespace platform {

enum class eFileAction {
    Written,  // complete under its final name
    Copied,   // as Written, with the content of another file
    Kept,     // up to date, left as it was
    Deleted,
    Lost,  // could not be kept under its final name, though told as written or copied
};

// Gets the native path. One file may come several times in a run; the last action counts, Kept only where it
// is the first.
using eFileObserver = std::function<void(eFileAction action, const std::string& diskPath)>;

// Puts another observer in place and gives back the previous one; an empty one ends the observation.
eFileObserver SetFileObserver(eFileObserver observer);

// Tells the observer. Files, renames and removals of this module tell by themselves; Kept and Copied are told
// by those who decide so. The null device is never told.
void TellFileEvent(eFileAction action, std::string_view path, ePathForm form = ePathForm::Resource);

}  // namespace platform
