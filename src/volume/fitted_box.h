#pragma once

#include <span>

#include "host/values.h"

// A rectangle in the plane: its middle, half its sizes, and the unit axis of the first of them.
struct eFittedBox {
    host::Point2 center;
    host::Point2 extent;
    host::Point2 axis{1, 0};
};

// The rectangle of the smallest area around the points among 90 directions from 0 to 1.57 radians, which
// leaves out the right angle itself; of equal areas the first direction wins. Without points all is zero.
// Costs 90 passes over the points and no memory.
eFittedBox FitBox(std::span<const host::Point2> points);
