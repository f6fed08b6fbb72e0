#include "standalone/loaders/gltf/gltf_curve.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace standalone {
namespace {

constexpr std::size_t kInTangent = 0;
constexpr std::size_t kValue = 1;
constexpr std::size_t kOutTangent = 2;

std::span<const float> ValueOf(const eGltfKeys& keys, std::size_t key) {
    return std::span(keys.values).subspan(key * keys.width, keys.width);
}

std::span<const float> CubicPart(const eGltfKeys& keys, std::size_t key, std::size_t part) {
    return std::span(keys.values).subspan((key * 3 + part) * keys.width, keys.width);
}

eGltfCurve StepCurve(const eGltfKeys& keys) {
    eGltfCurve curve{keys.width, {}, {}};
    for (std::size_t key = 0; key < keys.frames.size(); ++key) {
        if (key != 0 && !std::ranges::equal(ValueOf(keys, key - 1), ValueOf(keys, key))) {
            curve.Add(keys.frames[key], ValueOf(keys, key - 1));
        }
        curve.Add(keys.frames[key], ValueOf(keys, key));
    }
    return curve;
}

// The cubic Hermite spline between a key and the next (the format's own formula).
void EvaluateCubic(const eGltfKeys& keys, std::size_t key, double frame, std::span<float> value) {
    const double length = keys.frames[key + 1] - keys.frames[key];
    const double seconds = length / keys.framesPerSecond;
    const double t = length > 0 ? (frame - keys.frames[key]) / length : 1;
    const double t2 = t * t, t3 = t2 * t;
    const auto start = CubicPart(keys, key, kValue), leaving = CubicPart(keys, key, kOutTangent);
    const auto end = CubicPart(keys, key + 1, kValue), arriving = CubicPart(keys, key + 1, kInTangent);
    for (std::size_t i = 0; i < value.size(); ++i) {
        value[i] =
            static_cast<float>((2 * t3 - 3 * t2 + 1) * start[i] + seconds * (t3 - 2 * t2 + t) * leaving[i] +
                               (3 * t2 - 2 * t3) * end[i] + seconds * (t3 - t2) * arriving[i]);
    }
}

eGltfCurve CubicCurve(const eGltfKeys& keys) {
    eGltfCurve curve{keys.width, {}, {}};
    const std::size_t last = keys.frames.size() - 1;
    std::vector<float> value(keys.width);
    curve.Add(keys.frames[0], CubicPart(keys, 0, kValue));
    std::size_t key = 0;
    for (double frame = std::floor(keys.frames[0]) + 1; frame < keys.frames[last]; ++frame) {
        while (keys.frames[key + 1] < frame) {
            ++key;
        }
        EvaluateCubic(keys, key, frame, value);
        curve.Add(frame, value);
    }
    if (last != 0) {
        curve.Add(keys.frames[last], CubicPart(keys, last, kValue));
    }
    return curve;
}

}  // namespace

void eGltfCurve::Add(double frame, std::span<const float> value) {
    frames.push_back(frame);
    values.insert(values.end(), value.begin(), value.end());
}

std::size_t SplineSize(const eGltfKeys& keys) {
    return static_cast<std::size_t>(keys.frames.back() - keys.frames.front()) + 2;
}

eGltfCurve CurveOf(eGltfKeys keys) {
    switch (keys.motion) {
        case eGltfMotion::Linear:
            return {keys.width, std::move(keys.frames), std::move(keys.values)};
        case eGltfMotion::Step:
            return StepCurve(keys);
        case eGltfMotion::Cubic:
            return CubicCurve(keys);
    }
    return {};
}

void HoldWithin(eGltfCurve& curve, const eGltfSpan& clip) {
    const auto hold = [&](double frame, std::size_t key, bool isBefore) {
        const std::vector<float> value(curve.Value(key).begin(), curve.Value(key).end());
        curve.frames.insert(isBefore ? curve.frames.begin() : curve.frames.end(), frame);
        curve.values.insert(isBefore ? curve.values.begin() : curve.values.end(), value.begin(), value.end());
    };
    if (clip.first < curve.frames.front()) {
        hold(clip.first, 0, true);
    }
    if (clip.last > curve.frames.back()) {
        hold(clip.last, curve.Count() - 1, false);
    }
}

void AppendCurve(eGltfCurve& curve, eGltfCurve behind) {
    if (curve.IsEmpty()) {
        curve = std::move(behind);
        return;
    }
    curve.frames.insert(curve.frames.end(), behind.frames.begin(), behind.frames.end());
    curve.values.insert(curve.values.end(), behind.values.begin(), behind.values.end());
}

}  // namespace standalone
