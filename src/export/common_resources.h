#pragma once

class Export;

// The set that a Structure shares with the models nested in it. A Structure may be nested in another one:
// the outer set then waits, and is filled on when the walk has left the inner Structure.

// Begins the set of the current root, in the folder "common" of its model.
void BeginCommonResources(Export& run);

// Completes the sets of the Structures that the current root does not lie below.
void LeaveCommonResources(Export& run);

// Lets the set that is being filled wait while the current root is exported as a model that stands alone.
void SetCommonResourcesAside(Export& run);

// Completes every set of the run: writes its files, and tells the views whose mesh has not come in the end.
void FlushCommonResources(Export& run);
