#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/values.h"

// What one bone stores in one frame of an animation file.
struct eAnimationKey {
    int bone = 0;  // number in eAnimation::bones
    std::uint16_t flags = 0;
    host::Point3 position;  // metres, relative to the parent
    host::Quat rotation;    // w is zero or negative
    // The vertex section without its size, blocks and terminator; empty without vertices.
    std::span<const std::uint8_t> vertexSection;
};

struct eAnimationFrame {
    int frame = 0;  // from 0 at the animation's first frame
    std::vector<eAnimationKey> keys;
};

// An animation file. The vertex sections point into the bytes that it was read from.
struct eAnimation {
    int frameCount = 0;
    std::vector<std::string> bones;       // code page 1251
    std::vector<eAnimationFrame> frames;  // only those with a record, by rising number
};

// Nothing, with the reason and the byte offset in `problem`, if the bytes are no whole animation file.
std::optional<eAnimation> ReadAnimation(std::span<const std::uint8_t> bytes, std::string& problem);

// A block of a vertex section.
struct eVertexBlock {
    int first = 0;  // in the order of the mesh file
    int count = 0;
    std::optional<host::Box3> box;
    std::span<const std::uint8_t> vertices;  // count times the vertex size
};

// The blocks of a section; `vertexSize` is the stride of the bone's mesh in the mesh file.
std::optional<std::vector<eVertexBlock>> ReadVertexSection(std::span<const std::uint8_t> section,
                                                           int vertexSize, std::string& problem);

struct eBonePose {
    bool known = false;  // false up to the bone's first record
    host::Point3 position;
    host::Quat rotation;
    bool mirrored = false;
    bool visible = true;
};

// The pose of every bone at every frame, as the engine has it: each value is carried forward from the frame
// that last stored it. Entry frame * bones + bone.
std::vector<eBonePose> RestorePoses(const eAnimation& animation);
