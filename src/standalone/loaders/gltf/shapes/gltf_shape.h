#pragma once

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// A primitive of the host, and where it stands in the space of the mesh.
struct eGltfPlacedShape {
    eObjectKind kind;
    ePlacement offset;
};

// The primitive with the bounds of the mesh. A sphere or cylinder whose bounds are not as wide as long is
// scaled by the offset, unless they differ by no more than a body of few sides falls short of its circle.
eGltfPlacedShape MakeGltfShape(eGltfImport& import, int mesh, eGltfShape shape);

}  // namespace standalone
