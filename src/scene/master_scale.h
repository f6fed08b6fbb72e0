#pragma once

#include "run/export.h"

// Metres per scene unit.
inline float MasterScale(const Export& run) {
    return static_cast<float>(run.host->GetMasterScale(host::Interface::kMetres));
}
