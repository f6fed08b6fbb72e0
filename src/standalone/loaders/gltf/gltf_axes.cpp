#include "standalone/loaders/gltf/gltf_axes.h"

#include <cmath>
#include <numbers>

namespace standalone {
namespace {

using eQuaternion = host::Point4;

// The rotation of b, then that of a.
eQuaternion Product(const eQuaternion& a, const eQuaternion& b) {
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

// A quarter turn about x takes y to z and z to -y: C, and the way back.
constexpr float kHalfRoot = std::numbers::sqrt2_v<float> / 2;
constexpr eQuaternion kTurn{kHalfRoot, 0, 0, kHalfRoot};
constexpr eQuaternion kTurnBack{-kHalfRoot, 0, 0, kHalfRoot};

eRotation Normalised(const eQuaternion& q) {
    const double length =
        std::sqrt(double{q.x} * q.x + double{q.y} * q.y + double{q.z} * q.z + double{q.w} * q.w);
    const auto part = [&](float component) { return static_cast<float>(component / length); };
    return {part(q.x), part(q.y), part(q.z), part(q.w)};
}

}  // namespace

host::Matrix3 OwnAxes() {
    return {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {0, 0, 0}};
}

host::Point3 ToHostPosition(const host::Point3& translation, const eAxes& axes) {
    return axes.parentKeepsOwn ? translation : ToHostPoint(translation);
}

eRotation ToHostRotation(std::span<const float, 4> quaternion, const eAxes& axes) {
    const host::Point3 axis = ToHostPoint({quaternion[0], quaternion[1], quaternion[2]});
    eQuaternion rotation{axis.x, axis.y, axis.z, quaternion[3]};
    if (axes.keepsOwn) {
        rotation = Product(rotation, kTurn);
    }
    if (axes.parentKeepsOwn) {
        rotation = Product(kTurnBack, rotation);
    }
    return Normalised(rotation);
}

host::Point3 ToHostScale(const host::Point3& scale, const eAxes& axes) {
    return axes.keepsOwn ? scale : host::Point3{scale.x, scale.z, scale.y};
}

host::Matrix3 FileMatrix(std::span<const float, 16> columns) {
    const auto row = [&](std::size_t i) {
        return host::Point3{columns[4 * i], columns[4 * i + 1], columns[4 * i + 2]};
    };
    return {row(0), row(1), row(2), row(3)};
}

host::Matrix3 ToHostMatrix(const host::Matrix3& m, const eAxes& axes) {
    const host::Matrix3 turn = OwnAxes();
    const host::Matrix3 back = Inverse(turn);
    const host::Matrix3 turned = axes.keepsOwn ? m * turn : back * m * turn;
    return axes.parentKeepsOwn ? turned * back : turned;
}

}  // namespace standalone
