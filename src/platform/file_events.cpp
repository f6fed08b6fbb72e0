#include "platform/file_events.h"

#include <utility>

#include "platform/process_state.h"

namespace platform {

eFileObserver SetFileObserver(eFileObserver observer) {
    return std::exchange(ProcessState().fileObserver, std::move(observer));
}

void TellFileEvent(eFileAction action, std::string_view path, ePathForm form) {
    if (ProcessState().fileObserver && !IsNullDevice(path)) {
        ProcessState().fileObserver(action, DiskPath(path, form));
    }
}

}  // namespace platform
