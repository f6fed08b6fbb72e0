#pragma once

#include "standalone/loaders/shared/node_state.h"

namespace standalone {

// A primitive of the host, and where it stands in the space of the mesh that it stands for.
struct ePlacedShape {
    eObjectKind kind;
    ePlacement offset;
};

// The primitive with the bounds; `shape` is none but None. A sphere or cylinder whose bounds are not as wide
// as long is scaled by the offset, unless they differ by no more than a body of few sides falls short of its
// circle.
ePlacedShape PlacedShapeOf(const host::Box3& bounds, eShapeWord shape);

}  // namespace standalone
