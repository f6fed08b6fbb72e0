#include "standalone/data/world_matrices.h"

#include <algorithm>

namespace standalone {

namespace {

// Behind so many frames of the range nothing is remembered: no animation file counts further.
constexpr std::int64_t kMostFrames = 65536;

}  // namespace

eWorldMatrices::eWorldMatrices(const eSceneData& scene, std::size_t pageLimit)
    : mostPages(pageLimit),
      frameTicks(scene.frameTicks),
      firstFrame(scene.firstFrame),
      frameCount(static_cast<int>(
          std::clamp<std::int64_t>(std::int64_t{scene.lastFrame} - scene.firstFrame + 1, 0, kMostFrames))),
      nodes(scene.nodes.size()) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const eNodeData& data = scene.nodes[i];
        eNode& node = nodes[i];
        node.parent = data.parent;
        const eNode* parent = data.parent < 0 ? nullptr : &nodes[static_cast<std::size_t>(data.parent)];
        const host::Matrix3 local = StillMatrix(data.transform);
        if (data.keys.empty() && (parent == nullptr || parent->moving < 0)) {
            node.world = parent == nullptr ? local : local * parent->world;
            continue;
        }
        node.moving = static_cast<int>(moving.size());
        eMovingNode& entry = moving.emplace_back();
        entry.still = local;
        if (!data.keys.empty()) {
            entry.track.emplace(data.transform, data.keys);
        }
    }
}

std::optional<int> eWorldMatrices::FrameInRange(host::TimeValue time) const {
    if (time % frameTicks != 0) {
        return std::nullopt;
    }
    const std::int64_t frame = std::int64_t{time / frameTicks} - firstFrame;
    return frame >= 0 && frame < frameCount ? std::optional<int>(static_cast<int>(frame)) : std::nullopt;
}

const host::Matrix3* eWorldMatrices::Find(const eNode& node, host::TimeValue time, std::optional<int> frame) {
    if (node.moving < 0) {
        return &node.world;
    }
    eMovingNode& entry = moving[static_cast<std::size_t>(node.moving)];
    if (!frame) {
        return entry.lastMatrix && entry.lastTime == time ? &*entry.lastMatrix : nullptr;
    }
    const auto number = static_cast<std::size_t>(*frame / kPageFrames);
    if (number >= entry.pages.size() || entry.pages[number] == kNoPage) {
        return nullptr;
    }
    ePage& page = pages[entry.pages[number] - 1];
    const auto place = static_cast<std::size_t>(*frame % kPageFrames);
    page.recentlyUsed = true;
    return (page.known >> place & 1) != 0 ? &page.matrices[place] : nullptr;
}

host::Matrix3 eWorldMatrices::At(int node, host::TimeValue time) {
    const std::optional<int> frame = FrameInRange(time);
    const host::Matrix3* known =
        node < 0 ? nullptr : Find(nodes[static_cast<std::size_t>(node)], time, frame);
    return known != nullptr ? *known : WorkOut(node, time, frame);
}

host::Matrix3 eWorldMatrices::WorkOut(int node, host::TimeValue time, std::optional<int> frame) {
    path.clear();
    const host::Matrix3* known = nullptr;
    for (int up = node; up >= 0 && known == nullptr;) {
        const eNode& entry = nodes[static_cast<std::size_t>(up)];
        path.push_back(entry.moving);
        up = entry.parent;
        known = up < 0 ? nullptr : Find(nodes[static_cast<std::size_t>(up)], time, frame);
    }
    host::Matrix3 world = known != nullptr ? *known : host::Matrix3();
    const double exactFrame = static_cast<double>(time) / frameTicks;
    for (auto down = path.rbegin(); down != path.rend(); ++down) {
        const eMovingNode& entry = moving[static_cast<std::size_t>(*down)];
        world = (entry.track ? entry.track->At(exactFrame) : entry.still) * world;
        Remember(*down, time, frame, world);
    }
    return world;
}

void eWorldMatrices::Remember(int movingNode, host::TimeValue time, std::optional<int> frame,
                              const host::Matrix3& matrix) {
    if (!frame) {
        eMovingNode& entry = moving[static_cast<std::size_t>(movingNode)];
        entry.lastTime = time;
        entry.lastMatrix = matrix;
        return;
    }
    ePage& page = PageOf(movingNode, *frame);
    const auto place = static_cast<std::size_t>(*frame % kPageFrames);
    page.matrices[place] = matrix;
    page.known = static_cast<std::uint16_t>(page.known | 1U << place);
}

eWorldMatrices::ePage& eWorldMatrices::PageOf(int movingNode, int frame) {
    std::vector<std::uint32_t>& directory = moving[static_cast<std::size_t>(movingNode)].pages;
    const auto number = static_cast<std::size_t>(frame / kPageFrames);
    if (number >= directory.size()) {
        directory.resize(number + 1, kNoPage);
    }
    if (directory[number] == kNoPage) {
        directory[number] = TakePage();
        ePage& page = pages[directory[number] - 1];
        page.node = static_cast<std::uint32_t>(movingNode);
        page.number = static_cast<std::uint32_t>(number);
        page.known = 0;
    }
    ePage& page = pages[directory[number] - 1];
    page.recentlyUsed = true;
    return page;
}

// A new page, or the first one that nobody has used since the hand last passed (the clock algorithm).
std::uint32_t eWorldMatrices::TakePage() {
    if (pages.size() < mostPages) {
        pages.emplace_back();
        return static_cast<std::uint32_t>(pages.size());
    }
    while (pages[clockHand].recentlyUsed) {
        pages[clockHand].recentlyUsed = false;
        clockHand = (clockHand + 1) % pages.size();
    }
    const std::size_t taken = clockHand;
    clockHand = (clockHand + 1) % pages.size();
    moving[pages[taken].node].pages[pages[taken].number] = kNoPage;
    return static_cast<std::uint32_t>(taken + 1);
}

}  // namespace standalone
