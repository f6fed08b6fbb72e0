#pragma once

#include "animation/animation_reader.h"

namespace verify {

// A clip of the files with the pose of every bone at every frame, as the engine carries them forward.
struct ePlayedClip {
    explicit ePlayedClip(eAnimation read) : file(std::move(read)), poses(RestorePoses(file)) {}

    eAnimation file;
    std::vector<eBonePose> poses;

    // By bone, as the file numbers them.
    std::span<const eBonePose> At(int frame) const {
        return std::span(poses).subspan(static_cast<std::size_t>(frame) * file.bones.size(),
                                        file.bones.size());
    }
};

}  // namespace verify
