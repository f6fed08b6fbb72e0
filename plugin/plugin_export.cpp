#include "plugin/plugin_export.h"

#include "base/process_link.h"
#include "export/dialog_window.h"
#include "platform/write_fence.h"

namespace {

// A program that fences writes knows the stored resource root; the user may have named another one since.
bool ShowOptions(Export& run) {
    const bool isAccepted = ShowDialogWindow(run);
    if (isAccepted && platform::IsWriteFenced()) {
        platform::AddWriteRoot(run.options.resourceRoot.Text());
    }
    return isAccepted;
}

}  // namespace

PluginExport::PluginExport() {
    optionsDialog = ShowOptions;
}

int PluginExport::DoExport(const char* name, host::ExpInterface* exportInterface,
                           host::Interface* hostInterface, bool suppressPrompts, std::uint32_t optionsWord) {
    const eJoinedProcess joined(hostInterface->ProcessLink());
    return Export::DoExport(name, exportInterface, hostInterface, suppressPrompts, optionsWord);
}
