#pragma once

#include "run/export.h"

// The exporter as a host gets it: with a dialog, and at home in the host's process.
class PluginExport : public Export {
public:
    PluginExport();

    int DoExport(const char* name, host::ExpInterface* exportInterface, host::Interface* hostInterface,
                 bool suppressPrompts, std::uint32_t options) override;
};
