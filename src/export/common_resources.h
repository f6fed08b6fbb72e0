#pragma once

class Export;

// The set that a Structure shares with the models nested in it.

// Begins the set of the current root, in the folder "common" of its model.
void BeginCommonResources(Export& run);

// True if the current root is nested in the Structure whose set is being filled.
bool IsNestedInCommonOwner(const Export& run);

// Completes the set that is being filled, if any: writes its files, and tells the views whose mesh has not
// come in the end.
void FlushCommonResources(Export& run);
