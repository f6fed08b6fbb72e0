#include "animation/preview_block.h"

void WritePreviewBlock(Export&, const std::vector<host::INode*>&) {}
