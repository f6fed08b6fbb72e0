#pragma once

class Export;

// Writes the three comment lines of a model text on mdlWriter: who has exported it, when, and from which
// scene.
void WriteMdlHeader(Export& run);
