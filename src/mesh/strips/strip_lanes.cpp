#include "mesh/strips/strip_lanes.h"

eStripLanes::eStripLanes(const eStripAdjacency& adjacency)
    : faces(adjacency.faces), places(faces.size(), {notPlaced, notPlaced, notPlaced}) {
    // Three of a face, and the stops of the lanes.
    const std::size_t likely = 3 * faces.size() + faces.size() / 4;
    sides.reserve(likely);
    vertices.reserve(likely);
    for (std::size_t face = 0; face < faces.size(); ++face) {
        for (int side = 0; side < 3; ++side) {
            const eStripSide entered = MakeSide(face, side, false);
            if (PlaceOf(entered) == notPlaced) {
                AddLane(FirstOfLane(entered));
            }
        }
    }
}

void eStripLanes::AddLane(eStripSide first) {
    const eStripSide stop = MakeSide(faces.size(), 0, false);
    sides.push_back(stop);
    vertices.push_back(StartVertex(faces[FaceOf(first)], first));
    vertices.push_back(EndVertex(faces[FaceOf(first)], first));
    for (eStripSide side = first; side >= 0 && PlaceOf(side) == notPlaced; side = Next(side)) {
        places[FaceOf(side)][WayOf(side)] = static_cast<std::uint32_t>(sides.size());
        sides.push_back(side);
        vertices.push_back(OppositeVertex(faces[FaceOf(side)], side));
    }
    sides.push_back(stop);
}

// Of a closed lane any face is the first.
eStripSide eStripLanes::FirstOfLane(eStripSide entered) const {
    const eStripSide start = Twin(entered);
    eStripSide last = start;
    for (eStripSide side = Next(start); side >= 0 && side != start; side = Next(side)) {
        last = side;
    }
    return Twin(last);
}

// The entry of the next face on the lane, if that face sees this one too.
eStripSide eStripLanes::Next(eStripSide entered) const {
    const eStripSide next = Onward(faces[FaceOf(entered)], entered);
    const bool isMutual = next >= 0 && FaceOf(faces[FaceOf(next)].across[SideOf(next)]) == FaceOf(entered);
    return isMutual ? next : noStripSide;
}
