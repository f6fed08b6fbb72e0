#include "inspect/animation_view.h"

#include <vector>

#include "animation/animation_reader.h"
#include "animation/export_frame.h"
#include "base/ansi.h"

namespace inspect {

namespace {

struct eBoneCounts {
    int records = 0;
    int positions = 0;
    int rotations = 0;
    int visibilities = 0;
    int vertexSections = 0;
    std::size_t vertexBytes = 0;
    unsigned flags = 0;
};

std::vector<eBoneCounts> CountRecords(const eAnimation& animation) {
    std::vector<eBoneCounts> counts(animation.bones.size());
    for (const eAnimationFrame& frame : animation.frames) {
        for (const eAnimationKey& key : frame.keys) {
            eBoneCounts& bone = counts[static_cast<std::size_t>(key.bone)];
            ++bone.records;
            bone.positions += (key.flags & kFramePosition) != 0 ? 1 : 0;
            bone.rotations += (key.flags & kFrameRotation) != 0 ? 1 : 0;
            bone.visibilities += (key.flags & (kFrameVisible | kFrameHidden)) != 0 ? 1 : 0;
            bone.vertexSections += (key.flags & kFrameVertices) != 0 ? 1 : 0;
            bone.vertexBytes += key.vertexSection.size();
            bone.flags |= key.flags;
        }
    }
    return counts;
}

std::string FlagWords(unsigned flags) {
    constexpr std::pair<unsigned, const char*> kWords[] = {
        {kFramePosition, "position"}, {kFrameRotation, "rotation"}, {kFrameMirrored, "mirrored"},
        {kFrameVisible, "visible"},   {kFrameHidden, "hidden"},     {kFrameVertices, "vertices"},
    };
    std::string words;
    for (const auto& [flag, word] : kWords) {
        if ((flags & flag) != 0) {
            words += (words.empty() ? "" : " ") + std::string(word);
        }
    }
    return words;
}

}  // namespace

eDescription DescribeAnimation(std::span<const std::uint8_t> bytes, std::string& problem) {
    const std::optional<eAnimation> animation = ReadAnimation(bytes, problem);
    if (!animation) {
        return {};
    }
    const std::vector<eBoneCounts> counts = CountRecords(*animation);
    eDescription bones = eDescription::array();
    int records = 0;
    int keys = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const eBoneCounts& bone = counts[i];
        records += bone.records;
        keys += bone.positions + bone.rotations;
        bones.push_back({{"bone", ToUtf8(animation->bones[i])},
                         {"records", bone.records},
                         {"positions", bone.positions},
                         {"rotations", bone.rotations},
                         {"visibilities", bone.visibilities},
                         {"vertexSections", bone.vertexSections},
                         {"vertexBytes", bone.vertexBytes},
                         {"flags", FlagWords(bone.flags)}});
    }
    return {{"kind", "animation"},
            {"bytes", bytes.size()},
            {"frames", animation->frameCount},
            {"framesWithData", animation->frames.size()},
            {"boneCount", animation->bones.size()},
            {"boneRecords", records},
            {"keptKeys", keys},
            {"sampledKeys", 2 * static_cast<std::size_t>(animation->frameCount) * animation->bones.size()},
            {"bones", bones}};
}

}  // namespace inspect
