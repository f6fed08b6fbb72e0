#pragma once

#include "host/interface.h"
#include "host/timeline.h"
#include "run/options.h"

namespace written {}

namespace verify {

using namespace written;  // the files as the engine reads them

// A scene as the host shows it, and the settings of the export whose files are compared with it. Nothing of
// an export's own records: what should be in the files is worked out anew from the scene.
struct eVerifiedScene {
    host::Interface& host;
    const eExportOptions& options;
    bool selectedOnly = false;  // meshes of selected nodes only

    host::TimeValue StaticTime() const { return host::TimeOfFrame(host, options.staticFrame); }
    double MetresPerUnit() const { return host.GetMasterScale(host::Interface::kMetres); }
};

// How far files may lie from the scene.
struct eTolerances {
    double metres = 0.001;  // along each axis, as vertices are joined
    double degrees = 0.1;
    double decibels = 35;  // of pictures that are made anew
};

}  // namespace verify
