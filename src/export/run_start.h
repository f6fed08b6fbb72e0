#pragma once

#include <cstdint>

class Export;

namespace host {
class Interface;
}  // namespace host

// Bit of the host's options word: export selected nodes only.
inline constexpr std::uint32_t kExportSelectedOption = 1;

// The beginning and the end of a run.

// Takes over the host and what it asks for, and reads the host's animation range.
void BeginRun(Export& run, host::Interface* hostInterface, bool suppressPrompts, std::uint32_t optionsWord);

// Loads the options and lets the user change them or, without prompts, takes the fixed ones. False if the
// user has cancelled, or a path is one that no run can use, which is told.
bool SettleOptions(Export& run);

// Empties what an earlier run of the same object has left.
void ClearRun(Export& run);

// Lets go of the scene: the numbers on its nodes and everything that points into it.
void ForgetScene(Export& run);

// Gives the host's face back to the user.
void EndRun(Export& run);
