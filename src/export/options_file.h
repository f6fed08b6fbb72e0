#pragma once

#include <string>

class Export;

// The options between runs: the file "ZYREXPORT.CFG" in the host's folder of plug-in configurations.

std::string OptionsFilePath(const Export& run);

// Takes over what the file holds. Without a file, with one of a later version, and for what an older or a
// broken file lacks, the options stay as they are.
void LoadOptions(Export& run);

// False if the file can't be written, which nobody is told: it keeps what it had before then.
bool SaveOptions(const Export& run);
