#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "mesh/strips/strip_adjacency.h"
#include "mesh/strips/strip_entry.h"

// The lanes of a mesh: the faces in the order in which a strip runs over them that never turns. A face lies
// on three lanes, one for each way through it, and a strip runs along a lane in either direction. So a strip
// is made of few runs over neighbours in memory, where the way from face to face would wait for each of them.
//
// A lane ends with a stop on either side, which names a face one beyond the last. It ends where a third face
// on an edge sees one that doesn't see it, and a closed lane is cut anywhere: past its end a strip may still
// go on.
//
// Cost: linear; 38 bytes per face.
class eStripLanes {
public:
    // Who runs upwards meets at a place the vertex of the place above, who runs downwards that of the one
    // below.
    struct ePlace {
        eStripSide side;  // the entry of who runs upwards; who runs downwards enters over its twin
        std::uint16_t vertex;
    };

    explicit eStripLanes(const eStripAdjacency& adjacency);

    // Where the face entered as told stands on the lane along which the strip goes on, and whether that is
    // upwards.
    std::uint32_t PlaceOf(eStripSide entered) const { return placesOf[FaceOf(entered)][WayOf(entered)]; }
    bool RunsUp(std::uint32_t place, eStripSide entered) const { return places[place].side == entered; }

    const std::vector<ePlace>& Places() const { return places; }

private:
    static constexpr std::uint32_t notPlaced = ~std::uint32_t{0};

    // The ways through a face: an entry and its twin are one.
    static std::size_t WayOf(eStripSide entered) {
        constexpr std::array<std::uint8_t, kStripEntries> kWay = {0, 1, 2, 0, 1, 2};
        return kWay[EntryOf(entered)];
    }

    void AddOpenLanes();
    void AddClosedLanes();
    void AddLane(eStripSide first);

    // The entry of the next face on the lane, if that face sees this one too.
    eStripSide Next(eStripSide entered) const {
        const eStripFace& face = faces[FaceOf(entered)];
        const bool isMutual = (face.isMutual >> strip_entry::kOnward[EntryOf(entered)] & 1) != 0;
        return isMutual ? Onward(face, entered) : noStripSide;
    }

    const std::vector<eStripFace>& faces;
    std::vector<ePlace> places;
    std::vector<std::array<std::uint32_t, 3>> placesOf;  // per face and way
};
