// The file that this code was linked into: the program or a plug-in module.
#pragma once

#include <string>

namespace platform {

// The folder of that file with its final slash, in code page 1251; empty if the system can't tell.
std::string OwnModuleFolder();

}  // namespace platform
