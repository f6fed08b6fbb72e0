#include "volume/write_volume.h"

void WriteVolume(Export&, host::INode&) {}
