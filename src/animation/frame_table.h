#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "animation/export_animation.h"
#include "animation/export_frame.h"

// The frames of the timeline that animations hold, from the lowest one in use on. What lies between the
// animations takes no room, so they may begin below 0 or lie far out. A look-up costs a search over the
// stretches of the timeline that animations cover.
//
// A mesh that is animated by frames has one frame for each frame of the table. Its first one is that of the
// static frame, which serves for frame 0 as well where the table begins there.
class eFrameTable {
public:
    eFrameTable() = default;
    // Empty entries of so many bones for every frame of the animations that are in range.
    eFrameTable(const std::vector<eExportAnimation>& animations, int boneCount);

    // A frame of an animation that is in range.
    eExportFrame& At(int frame) { return frames[IndexOf(frame)]; }
    const eExportFrame& At(int frame) const { return frames[IndexOf(frame)]; }
    // All frames of an animation that is in range, for who walks over them.
    std::span<eExportFrame> Of(const eExportAnimation& animation) {
        return {&At(animation.firstFrame), &At(animation.lastFrame) + 1};
    }

    std::size_t MeshFrameCount() const { return frames.size() + MeshFrameOfFirst(); }
    std::size_t MeshFrameOf(int frame) const { return IndexOf(frame) + MeshFrameOfFirst(); }
    // The frame of the timeline that a mesh frame belongs to. Null for a static frame that belongs to none.
    eExportFrame* OfMeshFrame(std::size_t meshFrame);

    // Calls back with the number and the entries of each frame, rising.
    template <class Callback>
    void ForEach(Callback callback) {
        for (const eStretch& stretch : stretches) {
            for (int frame = stretch.first; frame <= stretch.last; ++frame) {
                callback(frame, At(frame));
            }
        }
    }

    // Takes the vertices of the bone out of all frames: its mesh is in no file.
    void DropVertices(std::size_t bone);

private:
    // Frames of the timeline without a gap.
    struct eStretch {
        int first = 0;
        int last = 0;
        std::size_t index = 0;  // of the first one in `frames`
    };

    std::size_t IndexOf(int frame) const;
    std::size_t MeshFrameOfFirst() const { return stretches.empty() || stretches.front().first != 0 ? 1 : 0; }

    std::vector<eStretch> stretches;  // rising
    std::vector<eExportFrame> frames;
};
