#include "animation/animation_reader.h"

#include <algorithm>
#include <cmath>

#include "animation/animation_format.h"
#include "animation/export_frame.h"
#include "io/streams/byte_reader.h"

namespace {

using xIo::eByteReader;

void ReadHead(eByteReader& reader, eAnimation& animation) {
    reader.Tag("EANM");
    if (reader.Value<std::uint32_t>() != kAnimationVersion) {
        reader.Fail("the version is not known");
    }
    reader.Tag("FRMS");
    const auto frames = reader.Value<std::uint32_t>();
    if (frames < 1 || frames > kMaxAnimationFrames) {
        reader.Fail("the number of frames is out of range");
    }
    animation.frameCount = reader.Failed() ? 0 : static_cast<int>(frames);
    reader.Tag("BMAP");
    const std::size_t bones = reader.Count<std::uint32_t>(1);
    if (bones > kMaxAnimatedBones) {
        reader.Fail("there are more than 255 bones");
    }
    for (std::size_t i = 0; i < bones && !reader.Failed(); ++i) {
        animation.bones.push_back(reader.String());
    }
}

host::Quat ReadRotation(eByteReader& reader) {
    const auto xyz = reader.Value<host::Point3>();
    const float rest = 1 - host::DotProd(xyz, xyz);
    return {xyz.x, xyz.y, xyz.z, -std::sqrt(std::max(rest, 0.0F))};
}

eAnimationKey ReadKey(eByteReader& reader, std::size_t boneCount) {
    constexpr unsigned kKnownFlags =
        kFramePosition | kFrameRotation | kFrameMirrored | kFrameVisible | kFrameHidden | kFrameVertices;
    eAnimationKey key;
    key.bone = reader.Value<std::uint8_t>();
    if (static_cast<std::size_t>(key.bone) >= boneCount) {
        reader.Fail("a bone record names no bone of the file");
    }
    key.flags = reader.Value<std::uint16_t>();
    if ((key.flags & ~kKnownFlags) != 0) {
        reader.Fail("a bone record has unknown flags");
    }
    if ((key.flags & kFramePosition) != 0) {
        key.position = reader.Value<host::Point3>();
    }
    if ((key.flags & kFrameRotation) != 0) {
        key.rotation = ReadRotation(reader);
    }
    if ((key.flags & kFrameVertices) != 0) {
        key.vertexSection = reader.Bytes(reader.Count<std::uint32_t>(1));
    }
    return key;
}

void ReadFrame(eByteReader& reader, eAnimation& animation) {
    reader.Tag("FRM2");
    eAnimationFrame frame;
    frame.frame = reader.Value<std::uint16_t>();
    const int previous = animation.frames.empty() ? -1 : animation.frames.back().frame;
    if (!reader.Failed() && (frame.frame <= previous || frame.frame >= animation.frameCount)) {
        reader.Fail("a frame number does not rise or lies outside the animation");
    }
    const int keys = reader.Value<std::uint8_t>();
    for (int i = 0; i < keys && !reader.Failed(); ++i) {
        frame.keys.push_back(ReadKey(reader, animation.bones.size()));
    }
    animation.frames.push_back(std::move(frame));
}

}  // namespace

std::optional<eAnimation> ReadAnimation(std::span<const std::uint8_t> bytes, std::string& problem) {
    eByteReader reader(bytes);
    eAnimation animation;
    ReadHead(reader, animation);
    while (!reader.AtEnd()) {
        ReadFrame(reader, animation);
    }
    problem = reader.Problem();
    return reader.Failed() ? std::nullopt : std::optional(std::move(animation));
}

std::optional<std::vector<eVertexBlock>> ReadVertexSection(std::span<const std::uint8_t> section,
                                                           int vertexSize, std::string& problem) {
    eByteReader reader(section);
    std::vector<eVertexBlock> blocks;
    while (!reader.Failed()) {
        eVertexBlock block;
        block.first = reader.Value<std::int32_t>();
        block.count = reader.Value<std::uint16_t>();
        const bool hasBox = reader.Value<std::uint16_t>() != 0;
        if (block.first == 0 && block.count == 0 && !hasBox) {
            break;
        }
        block.vertices =
            reader.Bytes(static_cast<std::size_t>(block.count) * static_cast<std::size_t>(vertexSize));
        if (hasBox) {
            const auto lower = reader.Value<host::Point3>();
            const auto upper = reader.Value<host::Point3>();
            block.box = host::Box3{lower, upper};
        }
        blocks.push_back(block);
    }
    if (!reader.Failed() && reader.Left() != 0) {
        reader.Fail("something stands behind the terminator of a vertex section");
    }
    problem = reader.Problem();
    return reader.Failed() ? std::nullopt : std::optional(std::move(blocks));
}

std::vector<eBonePose> RestorePoses(const eAnimation& animation) {
    const std::size_t boneCount = animation.bones.size();
    std::vector<eBonePose> poses;
    poses.reserve(boneCount * static_cast<std::size_t>(animation.frameCount));
    std::vector<eBonePose> carried(boneCount);
    auto record = animation.frames.begin();
    for (int frame = 0; frame < animation.frameCount; ++frame) {
        if (record != animation.frames.end() && record->frame == frame) {
            for (const eAnimationKey& key : record->keys) {
                eBonePose& pose = carried[static_cast<std::size_t>(key.bone)];
                pose.known = true;
                if ((key.flags & kFramePosition) != 0) {
                    pose.position = key.position;
                }
                if ((key.flags & kFrameRotation) != 0) {
                    pose.rotation = key.rotation;
                }
                if ((key.flags & (kFramePosition | kFrameRotation)) != 0) {
                    pose.mirrored = (key.flags & kFrameMirrored) != 0;
                }
                if ((key.flags & (kFrameVisible | kFrameHidden)) != 0) {
                    pose.visible = (key.flags & kFrameVisible) != 0;
                }
            }
            ++record;
        }
        poses.insert(poses.end(), carried.begin(), carried.end());
    }
    return poses;
}
