// A plug-in module has code of its own for boxes, records and files, and its own settings for them. While it
// works for the program that has loaded it, it takes over that program's, so that the user sees one program.
// The two must come from one build.
#pragma once

#include "base/diagnostics.h"
#include "platform/process_state.h"

// The settings of a process. They live as long as the program.
struct eProcessLink {
    platform::eProcessState* state = nullptr;
    xDebug::eReporting* reporting = nullptr;
};

// Those of the process that this code works for.
eProcessLink OwnProcessLink();

// Works for another process as long as it lives; with null all stays as it is.
class eJoinedProcess {
public:
    explicit eJoinedProcess(const eProcessLink* link);
    ~eJoinedProcess();
    eJoinedProcess(const eJoinedProcess&) = delete;
    eJoinedProcess& operator=(const eJoinedProcess&) = delete;
};
