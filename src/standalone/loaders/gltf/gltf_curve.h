#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace standalone {

// Keys with straight lines between them, as the host has them; of two keys at one frame the later holds from
// that frame on. Every value has `width` numbers.
struct eGltfCurve {
    std::size_t width = 0;
    std::vector<double> frames;
    std::vector<float> values;

    bool IsEmpty() const { return frames.empty(); }
    std::size_t Count() const { return frames.size(); }
    std::span<const float> Value(std::size_t key) const {
        return std::span(values).subspan(key * width, width);
    }
    void Add(double frame, std::span<const float> value);
};

// What moves one node.
struct eGltfNodeCurves {
    eGltfCurve position;
    eGltfCurve rotation;
    eGltfCurve scale;
    eGltfCurve weights;
    eGltfCurve visibility;  // 0 or 1
};

// How values move between the keys of the file.
enum class eGltfMotion { Linear, Step, Cubic };

// Keys of the file: rising frames, and the values as the accessor has them; a cubic key has an in-tangent
// (per second), a value and an out-tangent.
struct eGltfKeys {
    eGltfMotion motion = eGltfMotion::Linear;
    std::size_t width = 0;
    double framesPerSecond = 0;
    std::vector<double> frames;
    std::vector<float> values;
};

// How many keys CurveOf makes of a spline, at most.
std::size_t SplineSize(const eGltfKeys& keys);

// The same motion as straight lines. Linear keys are taken over, steps become two keys at one frame, and
// cubic splines are evaluated at their ends and at every whole frame in between, where nothing is lost.
eGltfCurve CurveOf(eGltfKeys keys);

// Appends a piece of motion behind another on the timeline. Both hold still from their outer keys to the ends
// of their clips, frames of the timeline, so that one does not glide into the other.
struct eGltfSpan {
    double first = 0;
    double last = 0;
};
void HoldWithin(eGltfCurve& curve, const eGltfSpan& clip);
void AppendCurve(eGltfCurve& curve, eGltfCurve behind);

}  // namespace standalone
