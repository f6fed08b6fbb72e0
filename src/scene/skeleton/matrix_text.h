#pragma once

#include "host/values.h"
#include "io/sdl/sdl_writer.h"

class Export;

// Three rounded numbers with a TAB between them.
void WritePoint3(xIo::xSdl::eWriter& writer, const host::Point3& point);

// Writes the matrix on mdlWriter in its shortest form: "matrix34", "Position", "orientation" or, for the
// identity, nothing. The translation is in scene units and is written in metres.
void WriteMatrix(Export& run, const host::Matrix3& matrix);

// True if the first three rows have length 1 and are at right angles, all up to 1e-5.
bool IsOrthonormal(const host::Matrix3& matrix);
