// The functions of the import library, which is loaded when the first file asks for it: to load and bind it
// takes longer than a small export. Functions that the library's own headers call (aiMaterial::Get) are
// defined here, as its doors.
#pragma once

#include <assimp/cimport.h>

#include <optional>

#include "standalone/load_message.h"

namespace standalone {

struct eAssimpFunctions {
    decltype(&aiImportFileExWithProperties) importFile = nullptr;
    decltype(&aiApplyPostProcessing) postProcess = nullptr;
    decltype(&aiReleaseImport) release = nullptr;
    decltype(&aiGetErrorString) errorString = nullptr;
    decltype(&aiCreatePropertyStore) createProperties = nullptr;
    decltype(&aiSetImportPropertyInteger) setInteger = nullptr;
    decltype(&aiReleasePropertyStore) releaseProperties = nullptr;
};

// Null, with the reason in `problem`, if the library is not installed or is none of the version that this
// program was built for. Loaded once a process.
const eAssimpFunctions* LoadAssimp(std::optional<eLoadMessage>& problem);

}  // namespace standalone
