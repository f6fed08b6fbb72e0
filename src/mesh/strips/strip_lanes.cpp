#include "mesh/strips/strip_lanes.h"

eStripLanes::eStripLanes(const eStripAdjacency& adjacency)
    : faces(adjacency.faces), placesOf(faces.size(), {notPlaced, notPlaced, notPlaced}) {
    // Three of a face, and the stops of the lanes.
    places.reserve(3 * faces.size() + faces.size() / 4);
    AddOpenLanes();
    AddClosedLanes();
}

// From each end that is not on a lane already: two of them come in over a side.
void eStripLanes::AddOpenLanes() {
    for (std::size_t face = 0; face < faces.size(); ++face) {
        for (int side = 0; side < 3; ++side) {
            if ((faces[face].isMutual >> side & 1) == 0) {
                AddLane(MakeSide(face, side, false));
                AddLane(MakeSide(face, side, true));
            }
        }
    }
}

// Of a closed lane any face is the first.
void eStripLanes::AddClosedLanes() {
    for (std::size_t face = 0; face < faces.size(); ++face) {
        for (int side = 0; side < 3; ++side) {
            AddLane(MakeSide(face, side, false));
        }
    }
}

void eStripLanes::AddLane(eStripSide first) {
    if (PlaceOf(first) != notPlaced) {
        return;
    }
    const eStripSide stop = MakeSide(faces.size(), 0, false);
    places.push_back({stop, StartVertex(faces[FaceOf(first)], first)});
    std::uint16_t vertex = EndVertex(faces[FaceOf(first)], first);
    for (eStripSide side = first; side >= 0 && PlaceOf(side) == notPlaced; side = Next(side)) {
        placesOf[FaceOf(side)][WayOf(side)] = static_cast<std::uint32_t>(places.size());
        places.push_back({side, vertex});
        vertex = OppositeVertex(faces[FaceOf(side)], side);
    }
    places.push_back({stop, vertex});
}
