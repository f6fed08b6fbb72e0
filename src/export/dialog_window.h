#pragma once

class Export;

// Shows the options of the run to the user, checks before that the plug-ins on this machine are not outdated,
// and takes over what he sets. False if he has cancelled, or could do nothing else. True, with the options as
// they are, if the dialog can't be shown at all.
bool ShowDialogWindow(Export& run);
