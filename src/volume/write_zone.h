#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// Writes the flat figure of a zone on mdlWriter, inside the open block of the zone.
void WriteZoneShape(Export& run, host::INode& node);

// Writes the gameplay tags of a zone on mdlWriter or, with `isVolume`, those of a volume on defWriter.
void WriteObstacleTags(Export& run, const host::INode& node, bool isVolume);
