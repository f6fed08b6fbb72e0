#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// Writes one volume: its shape, bone and matrix on mdlWriter, its gameplay tags on defWriter. Both stand
// inside their block "volumes".
void WriteVolume(Export& run, host::INode& node);
