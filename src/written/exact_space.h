// Points through matrices in double precision, so that what is measured is the file's rounding and not one's
// own.
#pragma once

#include <array>
#include <cmath>

#include "host/values.h"

namespace written {

using eVector = std::array<double, 3>;

inline eVector Exact(const host::Point3& p) {
    return {p.x, p.y, p.z};
}
host::DMatrix3 Exact(const host::Matrix3& m);

// A, then B.
host::DMatrix3 Product(const host::DMatrix3& a, const host::DMatrix3& b);
// The inverse; of a matrix without one the identity.
host::DMatrix3 ExactInverse(const host::DMatrix3& m);
eVector Through(const eVector& point, const host::DMatrix3& m);
// A normal through the transposed inverse, of any length. `inverse` is that of the points' matrix.
eVector NormalThroughInverse(const eVector& normal, const host::DMatrix3& inverse);

inline eVector operator-(const eVector& a, const eVector& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline double Dot(const eVector& a, const eVector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline double Length(const eVector& v) {
    return std::sqrt(Dot(v, v));
}
// The largest difference along an axis.
double LargestDifference(const eVector& a, const eVector& b);
// Between two vectors of any length, in degrees; 0 where one has none.
double AngleBetween(const eVector& a, const eVector& b);

}  // namespace written
