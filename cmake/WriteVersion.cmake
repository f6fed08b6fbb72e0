# Run by each build: writes what it is built from into OUTPUT, and only where that has changed. So a commit compiles
# this one source again and no other.
include(${CMAKE_CURRENT_LIST_DIR}/ZyrVersion.cmake)
zyr_describe(${FOLDER} ${NUMBER} version commit)
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT [[
#include "cli/terminal/version.h"

namespace cli {

const char* const kVersion = "@version@";
const char* const kCommit = "@commit@";

}  // namespace cli
]] @ONLY)
