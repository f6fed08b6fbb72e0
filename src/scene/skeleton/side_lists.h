#pragma once

class Export;
struct eBoneStep;

// Takes down what a node means beside the skeleton: a node that is no bone goes onto the list of its kind, a
// support point to the points of its bone, and "Land" asks for the land patch.
void SortOntoLists(Export& run, const eBoneStep& step);
