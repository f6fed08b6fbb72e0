#include "volume/write_zone.h"

void WriteZoneShape(Export&, host::INode&) {}

void WriteObstacleTags(Export&, const host::INode&, bool) {}
