#pragma once

class Export;

// Tells each view of another node's mesh, and each node that feeds one, whose mesh nobody has written in the
// end, with the reason. Called when all models that could write it have been walked; what was gathered is
// forgotten then. Says nothing once the user has cancelled.
void TellMissingMeshes(Export& run);
