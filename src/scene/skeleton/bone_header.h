#pragma once

class Export;
struct eBoneStep;

// Opens the block of a bone on mdlWriter: joint type and name, the properties that the game reads, and the
// colour. Leaves the joint type in the bone's slot. The block is the caller's to close.
void WriteBoneHeader(Export& run, const eBoneStep& step);
