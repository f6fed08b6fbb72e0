#include "mesh/build/weld.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "mesh/build/vertex_order.h"

namespace {

constexpr int SideOf(std::uint16_t side) {
    return side == 0 ? -1 : 1;
}

// Vertices are compared and hashed as plain bytes.
static_assert(sizeof(eExportVertex) == 21 * sizeof(std::uint32_t), "a vertex has no padding");

// Multiplications fold the bytes into one word whose upper half is the best mixed.
std::uint64_t HashOf(const eExportVertex& vertex) {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
    constexpr std::size_t kWords = sizeof vertex / sizeof(std::uint64_t);
    std::uint64_t words[kWords + 1] = {};
    std::memcpy(words, &vertex, sizeof vertex);
    std::uint64_t even = 0, odd = 0;
    for (std::size_t i = 0; i < kWords; i += 2) {
        even = (even ^ words[i]) * kOdd;
        even ^= even >> 32;
        odd = (odd ^ words[i + 1]) * kOdd;
        odd ^= odd >> 32;
    }
    return ((even ^ words[kWords]) * kOdd ^ odd) * kOdd;
}

bool AreIdentical(const eExportVertex& a, const eExportVertex& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Also for what is no number.
bool AreOne(float difference) {
    return !(std::fabs(difference) > kWeldTolerance);
}

constexpr std::uint32_t kFreeSlot = 0xFFFFFFFFU;
constexpr std::uint32_t kTagBits = 0xFFFF0000U;

}  // namespace

eVertexWeld::eVertexWeld(std::size_t corners, std::size_t positions)
    : most(std::min(corners, kMostVertices)), grid(std::in_place, std::min(positions, most), most) {
    // Last, so that what is not needed of the largest table lies at the end of the heap and is never touched.
    vertices.reserve(most);
}

std::uint16_t eVertexWeld::FindOrAdd(const eExportVertex& corner) {
    if (grid) {
        if (const std::optional<std::uint16_t> number = FindOrAddApart(corner)) {
            return *number;
        }
        grid.reset();
        MakeTree();
    }
    return FindOrAddInTree(corner);
}

// Nothing if the corner is one with a vertex that it does not equal, or if that can't be seen.
std::optional<std::uint16_t> eVertexWeld::FindOrAddApart(const eExportVertex& corner) {
    eVertexGrid::eNeighbours around;
    if (!grid->Gather(corner.position, around) || vertices.size() == kMostVertices) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < around.count; ++i) {
        const eExportVertex& vertex = vertices[around.numbers[i]];
        if (CompareVertices(corner, vertex) == 0) {
            return AreIdentical(corner, vertex) ? std::optional(around.numbers[i]) : std::nullopt;
        }
    }
    grid->Add(around);
    vertices.push_back(corner);
    return static_cast<std::uint16_t>(vertices.size() - 1);
}

// None of the vertices kept so far is near another: each goes to where its search falls off.
void eVertexWeld::MakeTree() {
    // Half of the slots stay free at the worst.
    slots.assign(std::bit_ceil(2 * most + 1), kFreeSlot);
    nodes.reserve(most);
    balances.reserve(most);
    for (const eExportVertex& vertex : vertices) {
        std::uint32_t tag = 0;
        std::uint32_t& slot = SlotOf(vertex, tag);
        ePath path;
        Search(vertex, path);
        slot = tag | AddNode(vertex.position, path);
    }
}

std::uint16_t eVertexWeld::FindOrAddInTree(const eExportVertex& corner) {
    std::uint32_t tag = 0;
    std::uint32_t& slot = SlotOf(corner, tag);
    if (slot != kFreeSlot) {
        return static_cast<std::uint16_t>(slot);
    }
    ePath path;
    if (const std::uint16_t number = Search(corner, path); number != kNone) {
        return number;
    }
    if (vertices.size() == kMostVertices) {
        return 0;
    }
    vertices.push_back(corner);
    const std::uint16_t number = AddNode(corner.position, path);
    slot = tag | number;
    return number;
}

// The slot of the vertex that equals the corner to the last bit, or the free one where it would stand.
std::uint32_t& eVertexWeld::SlotOf(const eExportVertex& corner, std::uint32_t& tag) {
    const std::uint64_t hash = HashOf(corner);
    tag = static_cast<std::uint32_t>(hash >> 32) & kTagBits;
    const std::size_t mask = slots.size() - 1;
    std::size_t slot = (hash >> 32) & mask;
    while (slots[slot] != kFreeSlot &&
           !((slots[slot] & kTagBits) == tag &&
             AreIdentical(vertices[static_cast<std::uint16_t>(slots[slot])], corner))) {
        slot = (slot + 1) & mask;
    }
    return slots[slot];
}

// The vertex that the search ends at, or kNone and the way to where it fell off.
std::uint16_t eVertexWeld::Search(const eExportVertex& corner, ePath& path) const {
    const host::Point3 position = corner.position;
    for (std::uint16_t number = root; number != kNone;) {
        const eNode& node = nodes[number];
        // The first difference beyond the tolerance decides; the side comes out of an addition, not of a
        // branch that nobody can foresee.
        float ahead = position.x - node.position.x;
        if (AreOne(ahead)) {
            ahead = position.y - node.position.y;
            if (AreOne(ahead)) {
                ahead = position.z - node.position.z;
            }
        }
        if (AreOne(ahead)) {
            const int order = CompareBehindPosition(corner, vertices[number]);
            if (order == 0) {
                return number;
            }
            ahead = static_cast<float>(order);
        }
        const std::uint16_t side = ahead > 0;
        path.steps[path.depth++] = {number, side};
        number = node.children[side];
    }
    return kNone;
}

std::uint16_t eVertexWeld::AddNode(const host::Point3& position, const ePath& path) {
    const auto number = static_cast<std::uint16_t>(nodes.size());
    nodes.push_back({position});
    balances.push_back(0);
    if (path.depth == 0) {
        root = number;
        return number;
    }
    const eStep& last = path.steps[path.depth - 1];
    nodes[last.node].children[last.side] = number;
    Rebalance(path);
    return number;
}

// The subtree below each step has grown by one level, until a step takes the growth in.
void eVertexWeld::Rebalance(const ePath& path) {
    for (int i = path.depth - 1; i >= 0; --i) {
        const auto [node, side] = path.steps[i];
        const int balance = balances[node] + SideOf(side);
        balances[node] = static_cast<std::int8_t>(balance);
        if (balance == 0) {
            return;
        }
        if (balance == SideOf(side) * 2) {
            const std::uint16_t top = Rotate(node, side);
            (i == 0 ? root : nodes[path.steps[i - 1].node].children[path.steps[i - 1].side]) = top;
            return;
        }
    }
}

// Puts a node right whose heavy side is two levels higher, and gives the node that takes its place.
std::uint16_t eVertexWeld::Rotate(std::uint16_t top, std::uint16_t heavySide) {
    const auto lightSide = static_cast<std::uint16_t>(1 - heavySide);
    const std::uint16_t heavy = nodes[top].children[heavySide];
    if (balances[heavy] == SideOf(heavySide)) {
        balances[top] = balances[heavy] = 0;
        return RotateOnce(top, heavySide);
    }
    const std::uint16_t middle = nodes[heavy].children[lightSide];
    const int leaning = balances[middle];
    balances[top] = static_cast<std::int8_t>(leaning == SideOf(heavySide) ? -SideOf(heavySide) : 0);
    balances[heavy] = static_cast<std::int8_t>(leaning == SideOf(lightSide) ? SideOf(heavySide) : 0);
    balances[middle] = 0;
    nodes[top].children[heavySide] = RotateOnce(heavy, lightSide);
    return RotateOnce(top, heavySide);
}

// The child of the heavy side goes up, `top` becomes its other child.
std::uint16_t eVertexWeld::RotateOnce(std::uint16_t top, std::uint16_t heavySide) {
    const auto lightSide = static_cast<std::uint16_t>(1 - heavySide);
    const std::uint16_t heavy = nodes[top].children[heavySide];
    nodes[top].children[heavySide] = nodes[heavy].children[lightSide];
    nodes[heavy].children[lightSide] = top;
    return heavy;
}
