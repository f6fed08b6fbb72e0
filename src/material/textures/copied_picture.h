#pragma once

#include <string>

// Picture files that the engine gets as they are.

// Why a .dds file can't be used, in the user's terms and code page 1251: no host need know the format, so
// nobody else would notice. Empty for a sound one, for a coding of pixels that isn't known here, and for
// other files.
std::string DamageOfCopiedPicture(const std::string& path);

// True if the name ends in .bmp or .tga and the file is of another kind: the engine goes by the name.
bool IsMisnamedPicture(const std::string& path);
