#include "mesh/strips/strip_experiment.h"

#include <algorithm>

namespace {

// A fake face has two sides with different ends. Both lie on one edge of the mesh, and whoever looks over an
// edge without being its first face finds that one.
constexpr std::uint8_t sidesOfFakeFace = 2;

struct eNoRecord {
    void Face(std::uint32_t, const eStripFace&) {}
    void Fake(std::uint16_t, std::uint16_t) {}
};

// By the place and the direction in which a face is entered, the lowest bits of an eStripSide: the corner
// opposite that side, and the sides over which a strip goes on or turns. Looked up, because which it is
// changes from face to face in a way that no branch predicts.
constexpr int kEntries = 6;
constexpr std::uint8_t kOpposite[kEntries] = {2, 2, 0, 0, 1, 1};
constexpr std::uint8_t kOnward[kEntries] = {1, 2, 2, 0, 0, 1};
constexpr std::uint8_t kTurned[kEntries] = {2, 1, 0, 2, 1, 0};

constexpr int EntryOf(eStripSide side) {
    return side & 7;
}

std::uint16_t StartVertex(const eStripFace& face, eStripSide side) {
    return face.v[RunsAgainst(side) ? NextCorner(SideOf(side)) : SideOf(side)];
}
std::uint16_t EndVertex(const eStripFace& face, eStripSide side) {
    return face.v[RunsAgainst(side) ? SideOf(side) : NextCorner(SideOf(side))];
}
std::uint16_t OppositeVertex(const eStripFace& face, eStripSide side) {
    return face.v[kOpposite[EntryOf(side)]];
}

// What lies across `face` over `side`, which runs against it (1) or not (0). Negative stays negative.
eStripSide Across(const eStripFace& face, int side, int against) {
    return face.across[side] ^ against;
}

// A strip that entered `face` over the edge from n0 to n1 and takes its opposite vertex t goes on over the
// edge from n1 to t, or turns over the edge from n0 to t.
eStripSide Onward(const eStripFace& face, eStripSide entered) {
    return Across(face, kOnward[EntryOf(entered)], entered & 1);
}
eStripSide Turned(const eStripFace& face, eStripSide entered) {
    return Across(face, kTurned[EntryOf(entered)], ~entered & 1);
}

}  // namespace

eStripExperiment::eStripExperiment(eStripAdjacency& someAdjacency)
    : adjacency(someAdjacency), faces(someAdjacency.faces), seen(someAdjacency.firstSpoke.size()) {
    cursors.reserve(adjacency.firstSpoke.size());
    for (const std::uint32_t place : adjacency.firstSpoke) {
        cursors.push_back({place, place, 0});
    }
}

float eStripExperiment::Measure(eStripSide start, std::size_t uncommitted, float toBeat) {
    Begin();
    eNoRecord none;
    std::uint32_t stripCount = 0;
    std::uint32_t faceCount = 0;
    for (; start != noStripSide; start = FindNextStart(start)) {
        ++stripCount;
        // The strips of an experiment share the uncommitted faces, so their number bounds the average.
        if (static_cast<float>(uncommitted) / static_cast<float>(stripCount) <= toBeat) {
            return 0.0f;
        }
        faceCount += BuildStrip(start, none, none);
    }
    return static_cast<float>(faceCount) / static_cast<float>(stripCount);
}

void eStripExperiment::Commit(eStripSide start, eStripList& strips, std::vector<std::uint32_t>& taken) {
    Begin();
    taken.clear();
    for (; start != noStripSide; start = FindNextStart(start)) {
        forward.Clear();
        backward.Clear();
        BuildStrip(start, forward, backward);
        std::for_each(backward.triangles.rbegin(), backward.triangles.rend(),
                      [&](const eStripTriangle& triangle) { strips.Add(triangle); });
        std::for_each(forward.triangles.begin(), forward.triangles.end(),
                      [&](const eStripTriangle& triangle) { strips.Add(triangle); });
        strips.EndStrip();
        taken.insert(taken.end(), backward.faces.begin(), backward.faces.end());
        taken.insert(taken.end(), forward.faces.begin(), forward.faces.end());
    }
    for (const std::uint32_t face : taken) {
        faces[face].mark = committedMark;
    }
}

void eStripExperiment::eGrowthRecord::Face(std::uint32_t number, const eStripFace& face) {
    int adjoining = 0;
    for (const eStripSide across : face.across) {
        adjoining += across >= 0 ? 1 : 0;
    }
    triangles.push_back({{face.v[0], face.v[1], face.v[2]}, static_cast<std::uint8_t>(adjoining), false});
    faces.push_back(number);
}

void eStripExperiment::eGrowthRecord::Fake(std::uint16_t n0, std::uint16_t n1) {
    triangles.push_back({{n0, n1, n0}, sidesOfFakeFace, true});
}

void eStripExperiment::eGrowthRecord::Clear() {
    triangles.clear();
    faces.clear();
}

// Grows a strip from the face of `start` along its direction, then backward over the side of `start` itself.
// The result is its number of real faces.
template <class Record>
std::uint32_t eStripExperiment::BuildStrip(eStripSide start, Record& ahead, Record& behind) {
    ++strip;
    eStripFace& first = faces[FaceOf(start)];
    first.mark = strip;
    for (const std::uint16_t v : first.v) {
        seen[v] = strip;
    }
    ahead.Face(FaceOf(start), first);
    const std::uint32_t aheadCount = Grow<false>(Onward(first, start), ahead);
    const std::uint32_t behindCount = Grow<true>(Across(first, SideOf(start), ~start & 1), behind);
    return 1 + aheadCount + behindCount;
}

// Grows over one end of the strip, from the face behind `next` on, and returns the number of real faces.
// Backward growth also ends at a face of which the strip has all vertices, as it meets it when it has wound
// round a vertex. Only the vertex opposite the edge can be new: the other two belong to the face before.
template <bool isBackward, class Record>
std::uint32_t eStripExperiment::Grow(eStripSide next, Record& record) {
    // Copies, since for all that the compiler knows a mark that is written may lie over the originals.
    const std::uint64_t mark = strip;
    const std::uint64_t firstMark = firstStrip;
    eStripFace* const all = faces.data();
    std::uint64_t* const lastSeen = seen.data();
    const auto isOpen = [=](eStripSide side) { return side >= 0 && all[FaceOf(side)].mark < firstMark; };
    std::uint32_t count = 0;
    for (bool goesOn = isOpen(next); goesOn;) {
        eStripFace& face = all[FaceOf(next)];
        const std::uint16_t newVertex = OppositeVertex(face, next);
        if (isBackward && lastSeen[newVertex] == mark) {
            break;
        }
        eStripSide onward = Onward(face, next);
        goesOn = isOpen(onward);
        if (!goesOn) {
            onward = Turned(face, next);
            goesOn = isOpen(onward);
            if (goesOn) {
                record.Fake(StartVertex(face, next), EndVertex(face, next));
            }
        }
        face.mark = mark;
        lastSeen[newVertex] = mark;
        record.Face(FaceOf(next), face);
        ++count;
        next = onward;
    }
    return count;
}

// The first place from `place` on whose spoke has a face that is not gone.
template <class IsGone>
std::uint32_t eStripExperiment::SkipSpokes(std::uint32_t place, std::uint32_t end, IsGone&& isGone) const {
    while (place < end && isGone(FaceAt(adjacency.spokes[place].side0)) &&
           isGone(FaceAt(adjacency.spokes[place].side1))) {
        ++place;
    }
    return place;
}

// The place of the first spoke of `vertex` with a face that this experiment can still take.
std::uint32_t eStripExperiment::FirstLiveSpoke(std::uint16_t vertex) {
    const std::uint32_t end = adjacency.firstSpoke[vertex + std::size_t{1}];
    eSpokeCursor& cursor = cursors[vertex];
    if (cursor.firstStrip != firstStrip) {
        cursor.uncommitted = SkipSpokes(cursor.uncommitted, end,
                                        [](const eStripFace& face) { return face.mark == committedMark; });
        cursor.unmarked = cursor.uncommitted;
        cursor.firstStrip = firstStrip;
    }
    cursor.unmarked =
        SkipSpokes(cursor.unmarked, end, [this](const eStripFace& face) { return IsMarked(face); });
    return cursor.unmarked;
}

// Where the chain goes on: among the edges of the vertex to which the last strip first ran, newest first, one
// with a free face across from a face that is not in the strip. So an edge between the strip and a free face
// gives no start; but the free face may lie beside the strip over another edge, and then the new strip runs
// away from the vertex, else towards it.
eStripSide eStripExperiment::FindNextStart(eStripSide start) {
    const std::uint16_t vertex = EndVertex(FaceAt(start), start);
    const std::uint32_t end = adjacency.firstSpoke[vertex + std::size_t{1}];
    for (std::uint32_t place = FirstLiveSpoke(vertex); place < end; ++place) {
        const eStripSpoke spoke = adjacency.spokes[place];
        const eStripFace& face0 = FaceAt(spoke.side0);
        const eStripFace& face1 = FaceAt(spoke.side1);
        if (!IsInStrip(face0) && !IsMarked(face1)) {
            return SharesEdgeWithStrip(face1) ? spoke.side1 : Reversed(spoke.side1);
        }
        if (!IsInStrip(face1) && !IsMarked(face0)) {
            return SharesEdgeWithStrip(face0) ? spoke.side0 : Reversed(spoke.side0);
        }
    }
    return noStripSide;
}

bool eStripExperiment::SharesEdgeWithStrip(const eStripFace& face) const {
    return std::any_of(std::begin(face.across), std::end(face.across),
                       [this](eStripSide side) { return side >= 0 && IsInStrip(FaceAt(side)); });
}
