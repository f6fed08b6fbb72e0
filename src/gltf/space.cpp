#include "gltf/space.h"

#include <cmath>

namespace gltf {

namespace {

using written::Dot;
using written::eVector;
using written::Length;

constexpr double kRounding = 0.001;  // of the four decimals in a model's text

eVector Scaled(const eVector& v, double factor) {
    return {v[0] * factor, v[1] * factor, v[2] * factor};
}

eVector Cross(const eVector& a, const eVector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

eVector Unit(const eVector& v) {
    const double length = Length(v);
    return length > 0 ? Scaled(v, 1 / length) : v;
}

double ScaleOf(const eVector& axis) {
    const double length = Length(axis);
    return std::fabs(length - 1) < kRounding ? 1 : length;
}

// The axes of a rotation, from largest part to the others (Shepperd, "Quaternion from Rotation Matrix",
// 1978).
eQuaternion QuaternionOf(const eVector& x, const eVector& y, const eVector& z) {
    const double trace = x[0] + y[1] + z[2];
    if (trace > 0) {
        const double s = 2 * std::sqrt(trace + 1);
        return {(y[2] - z[1]) / s, (z[0] - x[2]) / s, (x[1] - y[0]) / s, s / 4};
    }
    if (x[0] >= y[1] && x[0] >= z[2]) {
        const double s = 2 * std::sqrt(1 + x[0] - y[1] - z[2]);
        return {s / 4, (y[0] + x[1]) / s, (z[0] + x[2]) / s, (y[2] - z[1]) / s};
    }
    if (y[1] >= z[2]) {
        const double s = 2 * std::sqrt(1 + y[1] - x[0] - z[2]);
        return {(y[0] + x[1]) / s, s / 4, (z[1] + y[2]) / s, (z[0] - x[2]) / s};
    }
    const double s = 2 * std::sqrt(1 + z[2] - x[0] - y[1]);
    return {(z[0] + x[2]) / s, (z[1] + y[2]) / s, s / 4, (x[1] - y[0]) / s};
}

bool IsSheared(const eVector& x, const eVector& y, const eVector& z) {
    return std::fabs(Dot(x, y)) > kRounding || std::fabs(Dot(y, z)) > kRounding ||
           std::fabs(Dot(z, x)) > kRounding;
}

eQuaternion Normalized(const eQuaternion& q) {
    const double length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    return {q[0] / length, q[1] / length, q[2] / length, q[3] / length};
}

}  // namespace

host::DMatrix3 ToGltf() {
    host::DMatrix3 swap;
    swap.rows = {{{1, 0, 0}, {0, 0, 1}, {0, 1, 0}, {0, 0, 0}}};
    return swap;
}

ePlacement PlacementOf(const host::DMatrix3& matrix) {
    const auto& [rowX, rowY, rowZ, position] = matrix.rows;
    const bool isMirrored = Dot(Cross(rowX, rowY), rowZ) < 0;
    const eVector x = Length(rowX) > 0 ? Unit(rowX) : eVector{1, 0, 0};
    const eVector y0 = Unit(rowY);
    const eVector z0 = Scaled(Unit(rowZ), isMirrored ? -1 : 1);
    const eVector z = Unit(Cross(x, y0));
    ePlacement placement{.position = position,
                         .scale = {ScaleOf(rowX), ScaleOf(rowY), ScaleOf(rowZ) * (isMirrored ? -1 : 1)},
                         .isSheared = IsSheared(x, y0, z0)};
    if (Length(z) > 0) {
        placement.rotation = Normalized(QuaternionOf(x, Cross(z, x), z));
    }
    return placement;
}

host::DMatrix3 MatrixOf(const ePlacement& placement) {
    const auto& [x, y, z, w] = placement.rotation;
    host::DMatrix3 matrix;
    matrix.rows = {{{1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
                    {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
                    {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)},
                    placement.position}};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        matrix.rows[axis] = Scaled(matrix.rows[axis], placement.scale[axis]);
    }
    return matrix;
}

}  // namespace gltf
