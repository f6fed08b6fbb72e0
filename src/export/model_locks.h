#pragma once

#include <string>
#include <vector>

class Export;

// The folders of a run's models, for this run alone as long as it lives. All are taken before anything is
// written, in one order for all runs, so that no two runs wait for each other. The run waits for a folder in
// use, as long as run_flags.h says or until the user cancels. A run in memory takes none, and a folder that
// can't be locked is written without. One at a time.
class eModelLocks {
public:
    explicit eModelLocks(Export& owner);
    eModelLocks(const eModelLocks&) = delete;
    eModelLocks& operator=(const eModelLocks&) = delete;
    ~eModelLocks();

    // False if another run has kept a folder for too long, which has been told, or the user has cancelled
    // while this one waited: then nothing may be written.
    bool AreHeld() const { return areHeld; }

    // Those of the folders (native) that were there before the run and that no other run writes.
    std::vector<std::string> OlderFolders() const;

private:
    Export& run;
    bool areHeld = true;
};
