// The functions of the library that reads tif pictures, which is loaded when the first picture asks for it.
#pragma once

#include <tiffio.h>

namespace standalone {

struct eTiffFunctions {
    decltype(&TIFFOpenOptionsAlloc) newOptions = nullptr;
    decltype(&TIFFOpenOptionsFree) freeOptions = nullptr;
    decltype(&TIFFOpenOptionsSetMaxSingleMemAlloc) setMostMemory = nullptr;
    decltype(&TIFFOpenOptionsSetErrorHandlerExtR) setErrorHandler = nullptr;
    decltype(&TIFFOpenOptionsSetWarningHandlerExtR) setWarningHandler = nullptr;
    decltype(&TIFFClientOpenExt) open = nullptr;
    decltype(&TIFFClose) close = nullptr;
    decltype(&TIFFIsTiled) isTiled = nullptr;
    decltype(&TIFFGetField) getField = nullptr;
    decltype(&TIFFGetFieldDefaulted) getFieldDefaulted = nullptr;
    decltype(&TIFFScanlineSize64) scanlineSize = nullptr;
    decltype(&TIFFReadScanline) readScanline = nullptr;
    decltype(&TIFFReadRGBAImageOriented) readConverted = nullptr;
};

// Null if the library is not installed. Loaded once a process.
const eTiffFunctions* LoadTiff();

}  // namespace standalone
