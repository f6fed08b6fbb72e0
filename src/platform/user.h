// Who runs the process, and how others on the network reach its files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The account name in code page 1251, at most 1024 bytes; "unknown" where the system has none.
std::string AccountName();

// The machine as its network knows it, UTF-8; "unknown" where the system has no name for it.
std::string MachineName();

// The number by which the system knows this process.
std::uint32_t ProcessNumber();

// This process under a name that no other one has ever had, on whatever machine or in whatever container;
// UTF-8: "station7-5f3a09c1-4026531836-4711".
std::string ProcessName();

// True if the text ends in the name of a process, behind a dot, that is known to have ended: one of this
// machine since its last start, and of this container. Never on Windows, which does not tell of its start.
bool EndsInEndedProcess(std::string_view text);

// The universal (UNC) form of a path on a network drive; nothing for a local file, and always nothing on
// POSIX, where no such form exists.
std::optional<std::string> NetworkPath(std::string_view path);

// The language that the user reads, as two lower-case letters ("ru", "en"); empty if the system can't tell.
std::string UserLanguage();

// Where programs keep what the user has set, in UTF-8; empty if the system can't tell.
std::string ConfigFolder();

// Where the user keeps documents, in code page 1251; empty if the system can't tell. Made if it does not
// exist.
std::string DocumentsFolder();

}  // namespace platform
