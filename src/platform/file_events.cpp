#include "platform/file_events.h"

#include <utility>

namespace platform {
namespace {

eFileObserver& CurrentObserver() {
    static eFileObserver observer;
    return observer;
}

}  // namespace

eFileObserver SetFileObserver(eFileObserver observer) {
    return std::exchange(CurrentObserver(), std::move(observer));
}

void TellFileEvent(eFileAction action, std::string_view path, ePathForm form) {
    if (CurrentObserver() && !IsNullDevice(path)) {
        CurrentObserver()(action, DiskPath(path, form));
    }
}

}  // namespace platform
