#include "mesh/extract_node_mesh.h"

void ExtractNodeMesh(Export&, host::INode&, host::INode*, host::INode*) {}
