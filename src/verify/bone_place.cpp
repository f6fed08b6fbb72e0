#include "verify/bone_place.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "verify/bone_list.h"

namespace verify {

namespace {

constexpr double kNotSheared = 0.001;  // per component of an axis

eVector Cross(const eVector& a, const eVector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace

host::DMatrix3 PlaceInBoneAbove(const eVerifiedScene& scene, const host::INode& node, host::TimeValue time,
                                bool isRoot) {
    const host::INode* above = BoneAbove(node);
    host::DMatrix3 local = Exact(NoScale(node.GetNodeTM(time)));
    if (above != nullptr) {
        local = Product(local, host::ExactInverse(NoScale(above->GetNodeTM(time))));
    }
    for (double& coordinate : local.rows[3]) {
        coordinate *= scene.MetresPerUnit();
    }
    if (isRoot) {
        for (auto& row : local.rows) {
            row[1] = -row[1];
        }
    }
    return local;
}

bool IsMirrored(const host::DMatrix3& m) {
    return Dot(Cross(m.rows[0], m.rows[1]), m.rows[2]) < 0;
}

bool IsRotation(const host::DMatrix3& m) {
    const eVector third = Cross(m.rows[0], m.rows[1]);
    const double side = IsMirrored(m) ? -1 : 1;
    return LargestDifference(third, {side * m.rows[2][0], side * m.rows[2][1], side * m.rows[2][2]}) <=
           kNotSheared;
}

double AngleBetween(const host::DMatrix3& a, const host::DMatrix3& b) {
    double squares = 0;
    for (std::size_t row = 0; row < 3; ++row) {
        const eVector d = a.rows[row] - b.rows[row];
        squares += Dot(d, d);
    }
    const double halfSine = std::min(std::sqrt(squares / 8), 1.0);
    return 2 * std::asin(halfSine) * 180 / std::numbers::pi;
}

}  // namespace verify
