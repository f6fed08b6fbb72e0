// The program that runs.
#pragma once

#include <string>

namespace platform {

// Its file, as a native path; empty if the system can't tell.
std::string OwnProgram();

}  // namespace platform
