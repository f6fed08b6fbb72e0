#pragma once

class Export;

namespace cli {

// Saves the options of the run and looks whether they have arrived. False if they have not.
bool StoreOptions(const Export& run);

}  // namespace cli
