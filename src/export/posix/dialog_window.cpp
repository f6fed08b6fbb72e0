#include "export/dialog_window.h"

#include "export/deployment.h"
#include "platform/own_module.h"
#include "run/export.h"

// There is no window: the loaded options are what the user wants, and the check alone decides.
bool ShowDialogWindow(Export& run) {
    return CheckDeployment(platform::OwnModuleFolder(), run.host->GetMAXHWnd());
}
