#pragma once

#include <string>

namespace cli {

// From the last tag, or the number of the project where there is none. Both come from a source that each
// build writes (cmake/WriteVersion.cmake); the commit is empty where the sources are in no repository.
extern const char* const kVersion;
extern const char* const kCommit;

// What `--version` prints: "zyrexport VERSION" in the first line, then what it was built from and with.
std::string VersionText();

}  // namespace cli
