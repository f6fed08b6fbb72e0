#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// Tells what a hidden node without object keeps out of the files. A hidden bone takes its branch along, as
// the artist means it; but who hides a node that shows nothing is not aware that the volumes, zones, support
// points and previews below it, and a "Land" there, go as well.
void TellLeftOut(Export& run, host::INode& hidden);
