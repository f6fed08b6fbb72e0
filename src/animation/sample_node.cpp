#include "animation/sample_node.h"

void SampleNode(Export&, host::INode&, host::INode*) {}
