#pragma once

#include <cstddef>
#include <cstdint>

#include "mesh/strips/strip_adjacency.h"

// How a strip crosses a face. It enters over the edge from n0 to n1, the `eStripSide` along which it comes
// in, takes the opposite vertex t, and goes on over the edge from n1 to t or turns over the edge from n0 to
// t.

// The place and the direction in which a face is entered: the lowest bits of an eStripSide, 0 to 5.
constexpr std::size_t kStripEntries = 6;
constexpr std::size_t EntryOf(eStripSide side) {
    return static_cast<std::size_t>(side & 7);
}

namespace strip_entry {

// By entry. Looked up, because which it is changes from face to face in a way that no branch predicts.
constexpr std::uint8_t kOpposite[kStripEntries] = {2, 2, 0, 0, 1, 1};
constexpr std::uint8_t kOnward[kStripEntries] = {1, 2, 2, 0, 0, 1};
constexpr std::uint8_t kTurned[kStripEntries] = {2, 1, 0, 2, 1, 0};
constexpr std::uint8_t kTwin[kStripEntries] = {3, 4, 5, 0, 1, 2};

// What lies across `face` over `side`, which runs against it (1) or not (0). Negative stays negative.
inline eStripSide Across(const eStripFace& face, int side, int against) {
    return face.across[side] ^ against;
}

}  // namespace strip_entry

inline std::uint16_t StartVertex(const eStripFace& face, eStripSide entered) {
    return face.v[RunsAgainst(entered) ? NextCorner(SideOf(entered)) : SideOf(entered)];
}
inline std::uint16_t EndVertex(const eStripFace& face, eStripSide entered) {
    return face.v[RunsAgainst(entered) ? SideOf(entered) : NextCorner(SideOf(entered))];
}
inline std::uint16_t OppositeVertex(const eStripFace& face, eStripSide entered) {
    return face.v[strip_entry::kOpposite[EntryOf(entered)]];
}

inline eStripSide Onward(const eStripFace& face, eStripSide entered) {
    return strip_entry::Across(face, strip_entry::kOnward[EntryOf(entered)], entered & 1);
}
inline eStripSide Turned(const eStripFace& face, eStripSide entered) {
    return strip_entry::Across(face, strip_entry::kTurned[EntryOf(entered)], ~entered & 1);
}
// Out of the face again over the edge over which it was entered, in the other direction.
inline eStripSide Back(const eStripFace& face, eStripSide entered) {
    return strip_entry::Across(face, SideOf(entered), ~entered & 1);
}

// The entry of a strip that runs through the face the other way, over the edge from t to n1. Both ways end at
// n1, and each goes on where the other came from.
constexpr eStripSide Twin(eStripSide entered) {
    return (entered & ~7) | strip_entry::kTwin[EntryOf(entered)];
}
