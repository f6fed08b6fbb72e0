// What the exporter says of itself to a host.
#pragma once

// The numbers of the texts in the string table of the plug-in.
enum ePluginString {
    kClassNameString = 1,
    kCategoryString = 2,
    kLongDescriptionString = 4,
    kShortDescriptionString = 5,
    kCreditString = 6,
    kLibraryDescriptionString = 9,
};

// A text of the string table, in a buffer that is good until the next call; null if there is none of that
// number.
const char* GetString(int id);

inline constexpr const char* kPluginAuthor = "the zyrexport developers";
inline constexpr const char* kModelExtension = "MDL";
