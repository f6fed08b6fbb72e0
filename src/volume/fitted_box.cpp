#include "volume/fitted_box.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kDirections = 90;
constexpr double kQuarterTurn = 1.57;

struct eRange {
    float low = 1e38F;
    float high = -1e38F;

    void Include(float value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    float Size() const { return high - low; }
    float Middle() const { return (low + high) * 0.5F; }
};

}  // namespace

eFittedBox FitBox(std::span<const host::Point2> points) {
    eFittedBox fitted;
    if (points.empty()) {
        return fitted;
    }
    float best = 1e38F;
    for (int i = 0; i < kDirections; ++i) {
        const double angle = i * kQuarterTurn / kDirections;
        const auto cosine = static_cast<float>(std::cos(angle));
        const auto sine = static_cast<float>(std::sin(angle));
        const host::Point2 u{cosine, sine};
        const host::Point2 v{sine, -cosine};
        eRange alongU;
        eRange alongV;
        for (const host::Point2& p : points) {
            alongU.Include(p.x * u.x + p.y * u.y);
            alongV.Include(p.x * v.x + p.y * v.y);
        }
        const float area = alongU.Size() * alongV.Size();
        if (area < best) {
            best = area;
            const float middleU = alongU.Middle();
            const float middleV = alongV.Middle();
            fitted.axis = u;
            fitted.extent = {alongU.Size() * 0.5F, alongV.Size() * 0.5F};
            fitted.center = {u.x * middleU + v.x * middleV, u.y * middleU + v.y * middleV};
        }
    }
    return fitted;
}
