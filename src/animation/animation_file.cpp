#include "animation/animation_file.h"

void WriteAnimationFiles(Export&) {}
