#pragma once

// What counts for the run that is under way, set at its start: a process has one run at a time.
inline bool showDialog = false;      // the host did not suppress prompts
inline bool exportSelected = false;  // bit 0 of the host's options word: export selected nodes only

// Seconds that it waits for the folder of a model which another run is writing.
inline int longestLockWait = 600;
