#pragma once

#include <memory>

#include "io/sdl/sdl_writer.h"
#include "io/streams/stream_file.h"

// The files of the current model that are open; null where none is.
struct eModelTexts {
    std::unique_ptr<xIo::xSdl::eWriter> mdlWriter;
    std::unique_ptr<xIo::xSdl::eWriter> defWriter;
    std::unique_ptr<xIo::xSdl::eWriter> animWriter;
    std::unique_ptr<xIo::eFileStream> anmStream;
};
