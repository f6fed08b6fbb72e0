#pragma once

#include <span>

#include "host/values.h"

namespace host {

// Another face of a texture map, which a host need not have: a map that answers for a row of places at once,
// where EvalColor costs more for being asked than for the answer.
class MapRow {
public:
    virtual ~MapRow() = default;

    // By place what Texmap::EvalColor gives, without filter, in a context where the place is the exact
    // coordinates of every channel. The two spans are equally long.
    virtual void EvalRow(std::span<const DPoint2> places, std::span<AColor> colors) = 0;
};

}  // namespace host
