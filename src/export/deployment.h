#pragma once

#include <string>

// Compares the plug-ins on this machine with those on the studio's tools share, by the times of their last
// writing, and tells each that is older, over `parent` (a window handle or null). False if one of them is so
// important that nothing may be exported. `pluginFolder` is the folder of this plug-in's own file, with its
// final slash; a machine without the share has nothing to tell.
bool CheckDeployment(const std::string& pluginFolder, void* parent);
