#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "host/values.h"
#include "standalone/data/transform_track.h"
#include "standalone/scene_data.h"

namespace standalone {

// The node-to-world matrices of all nodes. Nodes that never move are worked out once; what a moving node was
// at whole frames of the range is remembered, so that a walk over the frames of a node costs one product a
// frame, however deep the node lies: its parent's frames are still there from the parent's own walk. The
// memory is bounded; frames that have not been asked for long are forgotten first.
class eWorldMatrices {
public:
    // 10 MB: nineteen bones through ten thousand frames. A walk down a chain only needs the frames of the
    // bone above; those further up that were forgotten are worked out again once for each branch.
    static constexpr std::size_t kMostPages = 12000;

    // Copies what it needs. A page of memory holds 16 frames of one node.
    explicit eWorldMatrices(const eSceneData& scene, std::size_t mostPages = kMostPages);

    // In ticks, at any time.
    host::Matrix3 At(int node, host::TimeValue time);

private:
    static constexpr int kPageFrames = 16;
    static constexpr std::uint32_t kNoPage = 0;

    // Consecutive frames of one node.
    struct ePage {
        std::uint32_t node = 0;    // in `moving`
        std::uint32_t number = 0;  // the page's place in eMovingNode::pages
        std::uint16_t known = 0;   // a bit per frame
        bool recentlyUsed = false;
        std::array<host::Matrix3, kPageFrames> matrices;
    };

    struct eMovingNode {
        std::optional<eTransformTrack> track;  // none where only an ancestor moves
        host::Matrix3 still;                   // local, without track
        std::vector<std::uint32_t> pages;      // numbers in `pages`, from 1
        host::TimeValue lastTime = 0;          // of the one matrix that no page holds
        std::optional<host::Matrix3> lastMatrix;
    };

    struct eNode {
        int parent = -1;
        int moving = -1;      // in `moving`
        host::Matrix3 world;  // of a node that never moves
    };

    // Where a time lies in the pages; nothing for a fraction of a frame or a frame outside the range.
    std::optional<int> FrameInRange(host::TimeValue time) const;
    const host::Matrix3* Find(const eNode& node, host::TimeValue time, std::optional<int> frame);
    // A matrix that is not known, and those above it.
    host::Matrix3 WorkOut(int node, host::TimeValue time, std::optional<int> frame);
    void Remember(int movingNode, host::TimeValue time, std::optional<int> frame,
                  const host::Matrix3& matrix);
    ePage& PageOf(int movingNode, int frame);
    std::uint32_t TakePage();

    std::size_t mostPages;
    int frameTicks;
    int firstFrame;
    int frameCount;
    std::vector<eNode> nodes;
    std::vector<eMovingNode> moving;
    std::deque<ePage> pages;    // number n is entry n - 1
    std::size_t clockHand = 0;  // the page that is asked first to make room
    std::vector<int> path;      // scratch: the moving nodes to work out, from the asked one up
};

}  // namespace standalone
