#include "standalone/data/transform_track.h"

#include <algorithm>
#include <cmath>

namespace standalone {

host::Quat HostRotation(const eRotation& rotation) {
    return {-rotation.x, -rotation.y, -rotation.z, rotation.w};
}

host::Matrix3 PlacementMatrix(const ePlacement& placement) {
    host::Matrix3 matrix = MatrixFromQuat(HostRotation(placement.rotation));
    matrix.SetRow(0, matrix.GetRow(0) * placement.scale.x);
    matrix.SetRow(1, matrix.GetRow(1) * placement.scale.y);
    matrix.SetRow(2, matrix.GetRow(2) * placement.scale.z);
    matrix.SetTrans(placement.position);
    return matrix;
}

host::Matrix3 StillMatrix(const eTransform& transform) {
    return transform.matrix ? *transform.matrix : PlacementMatrix(transform.parts);
}

namespace {

host::Point3 Between(const host::Point3& a, const host::Point3& b, double fraction) {
    const auto f = static_cast<float>(fraction);
    return a + (b - a) * f;
}

// Spherical linear interpolation (Shoemake, 1985), in double so that a key's neighbourhood stays smooth.
eRotation Between(const eRotation& a, const eRotation& b, double fraction) {
    const double dot = double{a.x} * b.x + double{a.y} * b.y + double{a.z} * b.z + double{a.w} * b.w;
    const double sign = dot < 0 ? -1 : 1;
    const double cosine = std::fabs(dot);
    double fromA = 1 - fraction;
    double fromB = fraction;
    // Nearly equal rotations lie on a straight line, and the arc's sine would divide by nothing.
    if (cosine < 1 - 1e-9) {
        const double angle = std::acos(cosine);
        const double sine = std::sin(angle);
        fromA = std::sin(fromA * angle) / sine;
        fromB = std::sin(fromB * angle) / sine;
    }
    fromB *= sign;
    const double x = fromA * a.x + fromB * b.x, y = fromA * a.y + fromB * b.y, z = fromA * a.z + fromB * b.z,
                 w = fromA * a.w + fromB * b.w;
    const double length = std::sqrt(x * x + y * y + z * z + w * w);
    return {static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length),
            static_cast<float>(w / length)};
}

}  // namespace

template <class Value>
void ePartTrack<Value>::AddAll(const std::vector<eTransformKey>& keys,
                               std::optional<Value> eTransformKey::*part) {
    const auto count = static_cast<std::size_t>(
        std::ranges::count_if(keys, [&](const eTransformKey& key) { return (key.*part).has_value(); }));
    frames.reserve(count);
    values.reserve(count);
    for (const eTransformKey& key : keys) {
        if (key.*part) {
            frames.push_back(key.frame);
            values.push_back(*(key.*part));
        }
    }
}

template <class Value>
Value ePartTrack<Value>::At(double frame) const {
    const eKeySpan span = FindKeys(frames, frame, hint);
    if (span.before == span.after) {
        return values[span.before];
    }
    return Between(values[span.before], values[span.after], span.fraction);
}

eTransformTrack::eTransformTrack(const eTransform& stillTransform, const std::vector<eTransformKey>& keys)
    : still(stillTransform) {
    position.AddAll(keys, &eTransformKey::position);
    rotation.AddAll(keys, &eTransformKey::rotation);
    scale.AddAll(keys, &eTransformKey::scale);
}

host::Matrix3 eTransformTrack::At(double frame) const {
    if (still.matrix) {
        host::Matrix3 matrix = *still.matrix;
        if (!position.IsEmpty()) {
            matrix.SetTrans(position.At(frame));
        }
        return matrix;
    }
    ePlacement placement = still.parts;
    if (!position.IsEmpty()) {
        placement.position = position.At(frame);
    }
    if (!rotation.IsEmpty()) {
        placement.rotation = rotation.At(frame);
    }
    if (!scale.IsEmpty()) {
        placement.scale = scale.At(frame);
    }
    return PlacementMatrix(placement);
}

float VisibilityAt(const eNodeData& node, double frame) {
    const std::vector<eVisibilityKey>& keys = node.visibilityKeys;
    if (keys.empty()) {
        return node.visibility;
    }
    const auto behind = std::ranges::upper_bound(keys, frame, {}, &eVisibilityKey::frame);
    return behind == keys.begin() ? keys.front().value : (behind - 1)->value;
}

}  // namespace standalone
