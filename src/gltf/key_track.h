#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "gltf/glb.h"

namespace gltf {

enum class eInterpolation { Linear, Step };

// A value over the frames of a clip, which keeps of a stretch that stands still its two ends.
class eKeyTrack {
public:
    explicit eKeyTrack(int components) : components_(static_cast<std::size_t>(components)) {}

    // Frames rise by 1.
    void Add(int frame, std::span<const double> value);

    bool IsEmpty() const { return frames_.empty(); }
    bool IsConstant() const { return frames_.size() <= 1 || !hasChanged_; }
    bool DiffersFrom(std::span<const double> value) const;
    int Components() const { return static_cast<int>(components_); }
    const std::vector<int>& Frames() const { return frames_; }
    const std::vector<float>& Values() const { return values_; }

private:
    bool EqualsEntry(std::size_t fromEnd, std::span<const float> value) const;

    std::size_t components_;
    bool hasChanged_ = false;
    std::vector<int> frames_;
    std::vector<float> values_;
};

// The samplers and channels of one clip. Tracks with the same frames share their times.
class eClipKeys {
public:
    eClipKeys(eGlb& glb, double framesPerSecond) : glb_(glb), framesPerSecond_(framesPerSecond) {}

    // An empty track is left out.
    void Put(const eKeyTrack& track, int node, const char* path, eInterpolation interpolation);
    bool IsEmpty() const { return channels_.empty(); }
    eJson Finish(const std::string& name, eJson extras);

private:
    int Times(const std::vector<int>& frames);

    eGlb& glb_;
    double framesPerSecond_;
    std::map<std::vector<int>, int> times_;
    eJson samplers_ = eJson::array();
    eJson channels_ = eJson::array();
};

}  // namespace gltf
