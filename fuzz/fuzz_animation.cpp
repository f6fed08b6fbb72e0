// Any bytes as an animation file: the reader must come to an end within its memory, and what it lets through
// must be playable.
#include <cstddef>
#include <cstdint>
#include <string>

#include "animation/animation_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string problem;
    const auto animation = ReadAnimation({data, size}, problem);
    if (!animation) {
        return 0;
    }
    for (const eAnimationFrame& frame : animation->frames) {
        for (const eAnimationKey& key : frame.keys) {
            for (const int vertexSize : {0, 12, 36}) {
                ReadVertexSection(key.vertexSection, vertexSize, problem);
            }
        }
    }
    // A few bytes may name many frames without a record, which is no fault but takes its memory.
    constexpr std::size_t kMostPoses = 1000000;
    if (animation->bones.size() * static_cast<std::size_t>(animation->frameCount) < kMostPoses) {
        RestorePoses(*animation);
    }
    return 0;
}
