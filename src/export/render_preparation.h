#pragma once

class Export;

// Brings the whole scene into render mode for the time of the model loop, inside a hold of the host, and
// reads the ambient light.
void PrepareRendering(Export& run);

// Leaves render mode and takes back every change that the run has made to the scene.
void EndRendering(Export& run);
