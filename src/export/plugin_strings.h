#pragma once

// What the exporter says of itself to a host.
inline constexpr const char* kPluginClassName = "ZYRExport";
inline constexpr const char* kPluginCategory = "Standard";
inline constexpr const char* kPluginLongDescription = "3D Studio MAX to ZYR Model Scene Exporter";
inline constexpr const char* kPluginShortDescription = "ZYR Model Scene Export";
inline constexpr const char* kPluginCredit = "(c) the zyrexport developers";
inline constexpr const char* kPluginLibraryDescription = "ZYR Model exporter";
inline constexpr const char* kPluginAuthor = "the zyrexport developers";
inline constexpr const char* kModelExtension = "MDL";
