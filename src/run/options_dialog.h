#pragma once

#include <functional>

class Export;

// Shows the options of the run to the user and takes over what he sets (dialog_logic.h does the taking over).
// False means that he cancelled: the run ends before it has written anything.
using eOptionsDialog = std::function<bool(Export&)>;
