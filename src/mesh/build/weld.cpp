#include "mesh/build/weld.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "mesh/build/vertex_order.h"

namespace {

// No path is longer: a tree of height h, balanced by height, has at least F(h + 2) - 1 nodes (F: Fibonacci).
constexpr int kMostLevels = 24;

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

constexpr std::uint32_t kFreeSlot = 0xFFFFFFFFU;

}  // namespace

eVertexWeld::eVertexWeld(std::size_t corners) {
    const std::size_t most = std::min(corners, kMostVertices);
    // Half of the slots stay free at the worst.
    slots.assign(std::bit_ceil(2 * most + 1), kFreeSlot);
    nodes.reserve(most);
    balances.reserve(most);
    // Last, so that what is not needed of the largest table lies at the end of the heap and is never touched.
    vertices.reserve(most);
}

std::uint16_t eVertexWeld::FindOrAdd(const eExportVertex& corner) {
    const std::uint64_t hash = HashOf(corner);
    const auto tag = static_cast<std::uint32_t>(hash >> 32) & 0xFFFF0000U;
    const std::size_t mask = slots.size() - 1;
    std::size_t slot = (hash >> 32) & mask;
    for (; slots[slot] != kFreeSlot; slot = (slot + 1) & mask) {
        const auto number = static_cast<std::uint16_t>(slots[slot]);
        if ((slots[slot] & 0xFFFF0000U) == tag && AreIdentical(vertices[number], corner)) {
            return number;
        }
    }
    const std::size_t before = vertices.size();
    const std::uint16_t number = FindOrAddInTree(corner);
    if (vertices.size() != before) {
        slots[slot] = tag | number;
    }
    return number;
}

std::uint16_t eVertexWeld::FindOrAddInTree(const eExportVertex& corner) {
    eStep path[kMostLevels];
    int depth = 0;
    const host::Point3 position = corner.position;
    for (std::uint16_t number = root; number != kNone;) {
        const eNode& node = nodes[number];
        // Kept apart so that the side comes out of an addition, not of a branch that nobody can foresee.
        const float ahead = position.x - node.position.x;
        std::uint16_t side = ahead > 0;
        if (!(std::fabs(ahead) > kWeldTolerance)) {
            int order = ComparePointsBehindX(position, node.position);
            order = order != 0 ? order : CompareBehindPosition(corner, vertices[number]);
            if (order == 0) {
                return number;
            }
            side = order > 0;
        }
        path[depth++] = {number, side};
        number = node.children[side];
    }
    return vertices.size() < kMostVertices ? Keep(corner, path, depth) : std::uint16_t{0};
}

std::uint16_t eVertexWeld::Keep(const eExportVertex& corner, const eStep* path, int depth) {
    const auto number = static_cast<std::uint16_t>(vertices.size());
    vertices.push_back(corner);
    nodes.push_back({corner.position});
    balances.push_back(0);
    if (depth == 0) {
        root = number;
        return number;
    }
    const eStep& last = path[depth - 1];
    nodes[last.node].children[last.side] = number;
    Rebalance(path, depth);
    return number;
}

// The subtree below each step has grown by one level, until a step takes the growth in.
void eVertexWeld::Rebalance(const eStep* path, int depth) {
    for (int i = depth - 1; i >= 0; --i) {
        const auto [node, side] = path[i];
        const int balance = balances[node] + SideOf(side);
        balances[node] = static_cast<std::int8_t>(balance);
        if (balance == 0) {
            return;
        }
        if (balance == SideOf(side) * 2) {
            const std::uint16_t top = Rotate(node, side);
            (i == 0 ? root : nodes[path[i - 1].node].children[path[i - 1].side]) = top;
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
