#include "mesh/write_mesh.h"

bool WriteMesh(Export&, xIo::eStream&, int) {
    return true;
}
