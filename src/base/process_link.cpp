#include "base/process_link.h"

eProcessLink OwnProcessLink() {
    return {&platform::ProcessState(), &xDebug::Reporting()};
}

eJoinedProcess::eJoinedProcess(const eProcessLink* link) {
    if (link != nullptr) {
        platform::UseProcessState(link->state);
        xDebug::UseReporting(link->reporting);
    }
}

eJoinedProcess::~eJoinedProcess() {
    platform::UseProcessState(nullptr);
    xDebug::UseReporting(nullptr);
}
