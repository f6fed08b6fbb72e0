#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include "mesh/strips/next_free.h"
#include "mesh/strips/strip_list.h"
#include "mesh/strips/strip_piece_index.h"

// A hub is a vertex that so many pieces touch that walking over them at every step would make the ordering
// quadratic: the middle of a fan, the tip of a finely divided cone. Its pieces are kept in groups whose
// members differ in nothing but their other vertices: they have the same number of corners at the same hubs,
// the same number of faces and the same direction. Unless their other vertices set them apart, one member of
// each group stands for all: the last one if the group has the wanted direction, and the first one otherwise.
//
// A mesh without hubs costs one look at each vertex; with hubs it is some 30 bytes per piece that touches
// them.
class eStripHubs {
public:
    static constexpr std::uint32_t notTouched = std::numeric_limits<std::uint32_t>::max();

    eStripHubs(const eStripList& pieces, const ePieceIndex& index);

    bool IsHub(std::uint16_t vertex) const { return !hubOfVertex.empty() && hubOfVertex[vertex] != none; }
    void SetCached(std::uint16_t hub, bool isCached) { hubs[hubOfVertex[hub]].isCached = isCached; }

    // Takes a piece out of its group, if it has one.
    void Take(std::uint32_t piece);

    // Notes which hubs the piece drawn last touches, until the next call.
    void Touch(std::span<const ePieceVertex> vertices);
    bool IsAnyTouched() const { return !touched.empty(); }

    // The place of the piece's first touched hub in the list given to `Touch`, or `notTouched`.
    std::uint32_t FirstTouch(std::uint32_t piece) const {
        const eGroup* group = GroupOf(piece);
        return group ? FirstTouch(*group) : notTouched;
    }

    // The piece's corners at hubs that are in the cache.
    std::uint32_t CachedCorners(std::uint32_t piece) const {
        const eGroup* group = GroupOf(piece);
        return group ? CachedCorners(*group) : 0;
    }

    // Calls `visit(piece)` for one member of each group at a touched hub, leaving out those that were taken
    // and those that are `setApart(piece)`.
    template <class SetApart, class Visit>
    void ForEachGroup(bool wantsClockwise, SetApart&& setApart, Visit&& visit) {
        ++rounds;
        for (const std::uint32_t hub : touched) {
            std::erase_if(hubs[hub].groups, [this](std::uint32_t group) { return groups[group].IsEmpty(); });
            for (const std::uint32_t number : hubs[hub].groups) {
                eGroup& group = groups[number];
                if (std::exchange(group.lastRound, rounds) == rounds) {
                    continue;
                }
                const std::uint32_t piece =
                    group.startsClockwise == wantsClockwise ? group.Last(setApart) : group.First(setApart);
                if (piece != none) {
                    visit(piece);
                }
            }
        }
    }

private:
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    struct eHub {
        bool isCached = false;
        std::uint32_t touch = notTouched;   // place in the list given to `Touch`
        std::vector<std::uint32_t> groups;  // those with members left, as far as known
    };

    struct eHubUse {
        std::uint32_t hub;
        std::uint32_t corners;
        auto operator<=>(const eHubUse&) const = default;
    };

    struct eGroup {
        eGroup(std::vector<eHubUse> someUses, bool isClockwise, std::vector<std::uint32_t> someMembers);

        bool IsEmpty() { return left.AtOrAbove(0) == members.size(); }
        template <class SetApart>
        std::uint32_t First(SetApart&& setApart) {
            for (std::uint32_t place = left.AtOrAbove(0); place < members.size();
                 place = left.AtOrAbove(place + 1)) {
                if (!setApart(members[place])) {
                    return members[place];
                }
            }
            return none;
        }
        template <class SetApart>
        std::uint32_t Last(SetApart&& setApart) {
            for (std::uint32_t end = left.EndBelow(members.size()); end > 0; end = left.EndBelow(end - 1)) {
                if (!setApart(members[end - 1])) {
                    return members[end - 1];
                }
            }
            return none;
        }

        std::vector<eHubUse> uses;
        bool startsClockwise;
        std::vector<std::uint32_t> members;  // pieces, ascending
        eNextFree left;                      // places in `members`
        std::uint32_t lastRound = 0;
    };

    const eGroup* GroupOf(std::uint32_t piece) const {
        return groupOfPiece.empty() || groupOfPiece[piece] == none ? nullptr : &groups[groupOfPiece[piece]];
    }
    std::uint32_t FirstTouch(const eGroup& group) const;
    std::uint32_t CachedCorners(const eGroup& group) const;
    void FindHubs(const ePieceIndex& index);
    void MakeGroups(const eStripList& pieces, const ePieceIndex& index);
    std::vector<eHubUse> HubUses(std::span<const ePieceVertex> vertices) const;

    std::vector<std::uint32_t> hubOfVertex;   // empty without hubs
    std::vector<std::uint32_t> groupOfPiece;  // empty without hubs
    std::vector<eHub> hubs;
    std::vector<eGroup> groups;
    std::vector<std::uint32_t> touched;  // hubs
    std::uint32_t rounds = 0;
};
