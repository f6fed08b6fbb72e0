#pragma once

#include "animation/animation_reader.h"
#include "written/exact_space.h"

namespace written {

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

// The matrix of a stored pose.
host::DMatrix3 MatrixOf(const eBonePose& pose);

}  // namespace written
