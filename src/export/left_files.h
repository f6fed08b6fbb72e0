#pragma once

class Export;
class eModelLocks;

// Removes what killed runs have left under temporary names: in a model's folder all such files of the kinds
// that exports write, as the lock says that no other run is at it; where the run has written textures that
// scenes share, those whose name tells a process that has ended. The run's own files may still be under way;
// one that it could not write to its end goes too.
void RemoveLeftFiles(const Export& run, const eModelLocks& locks);
