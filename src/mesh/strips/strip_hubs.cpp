#include "mesh/strips/strip_hubs.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "mesh/strips/strip_direction.h"

namespace {

// Below this many pieces at a vertex, walking over them costs less than keeping groups.
constexpr std::size_t fewestPiecesOfHub = 512;

}  // namespace

eStripHubs::eGroup::eGroup(std::vector<eHubUse> someUses, bool isClockwise,
                           std::vector<std::uint32_t> someMembers)
    : uses(std::move(someUses)),
      startsClockwise(isClockwise),
      members(std::move(someMembers)),
      left(members.size()) {}

eStripHubs::eStripHubs(const eStripList& pieces, const ePieceIndex& index) {
    FindHubs(index);
    if (!hubs.empty()) {
        MakeGroups(pieces, index);
    }
}

void eStripHubs::FindHubs(const ePieceIndex& index) {
    for (std::size_t v = 0; v < index.VertexCount(); ++v) {
        if (index.PiecesOf(static_cast<std::uint16_t>(v)).size() >= fewestPiecesOfHub) {
            hubOfVertex.resize(index.VertexCount(), none);
            hubOfVertex[v] = static_cast<std::uint32_t>(hubs.size());
            hubs.emplace_back();
        }
    }
}

void eStripHubs::MakeGroups(const eStripList& pieces, const ePieceIndex& index) {
    using eKey = std::tuple<std::vector<eHubUse>, std::size_t, bool>;
    std::map<eKey, std::vector<std::uint32_t>> membersOfKey;
    for (std::uint32_t piece = 0; piece < pieces.Size(); ++piece) {
        std::vector<eHubUse> uses = HubUses(index.VerticesOf(piece));
        if (!uses.empty()) {
            membersOfKey[{std::move(uses), pieces[piece].size(), StartsClockwise(pieces[piece])}].push_back(
                piece);
        }
    }
    groupOfPiece.assign(pieces.Size(), none);
    for (auto& [key, members] : membersOfKey) {
        const auto group = static_cast<std::uint32_t>(groups.size());
        for (const std::uint32_t piece : members) {
            groupOfPiece[piece] = group;
        }
        for (const eHubUse& use : std::get<0>(key)) {
            hubs[use.hub].groups.push_back(group);
        }
        groups.emplace_back(std::get<0>(key), std::get<2>(key), std::move(members));
    }
}

std::vector<eStripHubs::eHubUse> eStripHubs::HubUses(std::span<const ePieceVertex> vertices) const {
    std::vector<eHubUse> uses;
    for (const ePieceVertex& entry : vertices) {
        if (IsHub(entry.vertex)) {
            uses.push_back({hubOfVertex[entry.vertex], entry.corners});
        }
    }
    std::sort(uses.begin(), uses.end());
    return uses;
}

void eStripHubs::Take(std::uint32_t piece) {
    if (!groupOfPiece.empty() && groupOfPiece[piece] != none) {
        eGroup& group = groups[groupOfPiece[piece]];
        const auto place = std::lower_bound(group.members.begin(), group.members.end(), piece);
        group.left.Take(static_cast<std::uint32_t>(place - group.members.begin()));
    }
}

void eStripHubs::Touch(std::span<const ePieceVertex> vertices) {
    if (hubs.empty()) {
        return;
    }
    for (const std::uint32_t hub : touched) {
        hubs[hub].touch = notTouched;
    }
    touched.clear();
    for (std::uint32_t place = 0; place < vertices.size(); ++place) {
        if (IsHub(vertices[place].vertex)) {
            touched.push_back(hubOfVertex[vertices[place].vertex]);
            hubs[touched.back()].touch = place;
        }
    }
}

std::uint32_t eStripHubs::FirstTouch(const eGroup& group) const {
    std::uint32_t first = notTouched;
    for (const eHubUse& use : group.uses) {
        first = std::min(first, hubs[use.hub].touch);
    }
    return first;
}

std::uint32_t eStripHubs::CachedCorners(const eGroup& group) const {
    std::uint32_t corners = 0;
    for (const eHubUse& use : group.uses) {
        corners += hubs[use.hub].isCached ? use.corners : 0;
    }
    return corners;
}
