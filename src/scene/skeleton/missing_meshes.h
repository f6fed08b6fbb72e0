#pragma once

class Export;

// Tells each view whose mesh, that of another node, nobody has written in the end, with the reason. Called
// when all models that could write it have been walked; what was gathered is forgotten then. Says nothing
// once the user has cancelled.
void TellMissingMeshes(Export& run);
