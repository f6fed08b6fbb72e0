#include "gltf/key_track.h"

#include <algorithm>

namespace gltf {

bool eKeyTrack::EqualsEntry(std::size_t fromEnd, std::span<const float> value) const {
    if (frames_.size() < fromEnd) {
        return false;
    }
    const auto entry = values_.end() - static_cast<std::ptrdiff_t>(fromEnd * components_);
    return std::equal(value.begin(), value.end(), entry);
}

void eKeyTrack::Add(int frame, std::span<const double> value) {
    std::vector<float> rounded(value.begin(), value.end());
    if (EqualsEntry(1, rounded) && EqualsEntry(2, rounded)) {
        frames_.back() = frame;
        return;
    }
    hasChanged_ |= !frames_.empty() && !EqualsEntry(1, rounded);
    frames_.push_back(frame);
    values_.insert(values_.end(), rounded.begin(), rounded.end());
}

bool eKeyTrack::DiffersFrom(std::span<const double> value) const {
    const std::vector<float> rounded(value.begin(), value.end());
    return !frames_.empty() && !EqualsEntry(frames_.size(), rounded);
}

int eClipKeys::Times(const std::vector<int>& frames) {
    const auto [entry, isNew] = times_.try_emplace(frames, -1);
    if (isNew) {
        std::vector<float> seconds;
        seconds.reserve(frames.size());
        for (const int frame : frames) {
            seconds.push_back(static_cast<float>(frame / framesPerSecond_));
        }
        entry->second = glb_.AddFloats(seconds, 1, eBufferUse::Data, true);
    }
    return entry->second;
}

void eClipKeys::Put(const eKeyTrack& track, int node, const char* path, eInterpolation interpolation) {
    if (track.IsEmpty()) {
        return;
    }
    // The values of weights are counted one by one.
    const int components = std::string_view(path) == "weights" ? 1 : track.Components();
    const auto sampler = static_cast<int>(samplers_.size());
    samplers_.push_back({{"input", Times(track.Frames())},
                         {"output", glb_.AddFloats(track.Values(), components, eBufferUse::Data)},
                         {"interpolation", interpolation == eInterpolation::Step ? "STEP" : "LINEAR"}});
    channels_.push_back({{"sampler", sampler}, {"target", {{"node", node}, {"path", path}}}});
}

eJson eClipKeys::Finish(const std::string& name, eJson extras) {
    return {{"name", name},
            {"samplers", std::move(samplers_)},
            {"channels", std::move(channels_)},
            {"extras", std::move(extras)}};
}

}  // namespace gltf
