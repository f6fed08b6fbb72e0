#include "standalone/pictures/tiff/tiff_functions.h"

#include "standalone/data/optional_library.h"

namespace standalone {
namespace {

class eTiffLibrary {
public:
    eTiffLibrary() {
        library.Find("TIFFOpenOptionsAlloc", functions.newOptions);
        library.Find("TIFFOpenOptionsFree", functions.freeOptions);
        library.Find("TIFFOpenOptionsSetMaxSingleMemAlloc", functions.setMostMemory);
        library.Find("TIFFOpenOptionsSetErrorHandlerExtR", functions.setErrorHandler);
        library.Find("TIFFOpenOptionsSetWarningHandlerExtR", functions.setWarningHandler);
        library.Find("TIFFClientOpenExt", functions.open);
        library.Find("TIFFClose", functions.close);
        library.Find("TIFFIsTiled", functions.isTiled);
        library.Find("TIFFGetField", functions.getField);
        library.Find("TIFFGetFieldDefaulted", functions.getFieldDefaulted);
        library.Find("TIFFScanlineSize64", functions.scanlineSize);
        library.Find("TIFFReadScanline", functions.readScanline);
        library.Find("TIFFReadRGBAImageOriented", functions.readConverted);
    }

    eTiffFunctions functions;
    eOptionalLibrary library{ZYR_TIFF_FILE};
};

}  // namespace

const eTiffFunctions* LoadTiff() {
    static const eTiffLibrary tiff;
    return tiff.library.Problem().empty() ? &tiff.functions : nullptr;
}

}  // namespace standalone
