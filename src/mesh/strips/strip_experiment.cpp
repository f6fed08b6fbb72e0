#include "mesh/strips/strip_experiment.h"

#include <algorithm>

#include "mesh/strips/strip_entry.h"

namespace {

// A fake face has two sides with different ends. Both lie on one edge of the mesh, and whoever looks over an
// edge without being its first face finds that one.
constexpr std::uint8_t sidesOfFakeFace = 2;

struct eNoRecord {
    void Face(std::uint32_t, const eStripFace&) {}
    void TurnOverLast(std::uint16_t, std::uint16_t) {}
};

}  // namespace

eStripExperiment::eStripExperiment(const eStripAdjacency& someAdjacency, std::uint32_t someNumbers)
    : adjacency(someAdjacency),
      lanes(someAdjacency),
      numbers(someNumbers),
      marks(someAdjacency.faces.size() + 1),
      seen(someAdjacency.firstSpoke.size()) {
    marks.back() = committedMark;
    cursors.reserve(adjacency.firstSpoke.size());
    for (const std::uint32_t place : adjacency.firstSpoke) {
        cursors.push_back({place, place, 0});
    }
}

void eStripExperiment::Begin() {
    if (numbers - strip <= adjacency.faces.size()) {
        NumberAnew();
    }
    firstStrip = strip + 1;
}

void eStripExperiment::NumberAnew() {
    std::ranges::replace_if(
        marks, [](std::uint32_t mark) { return mark != committedMark; }, 0u);
    std::ranges::fill(seen, 0u);
    for (eSpokeCursor& cursor : cursors) {
        cursor.firstStrip = 0;
    }
    strip = 0;
}

eStripMeasure eStripExperiment::Measure(eStripSide start, std::size_t uncommitted, float toBeat) {
    Begin();
    eNoRecord none;
    std::uint32_t stripCount = 0;
    std::uint32_t faceCount = 0;
    for (; start != noStripSide; start = FindNextStart(start)) {
        ++stripCount;
        // The strips of an experiment share the uncommitted faces, so their number bounds the average.
        if (static_cast<float>(uncommitted) / static_cast<float>(stripCount) <= toBeat) {
            return {0.0f, stripCount};
        }
        faceCount += BuildStrip(start, none, none);
    }
    return {static_cast<float>(faceCount) / static_cast<float>(stripCount), stripCount};
}

bool eStripExperiment::StartAlike(eStripSide start, eStripSide other) {
    Begin();
    eNoRecord none;
    const std::uint32_t count = BuildStrip(start, none, none);
    eOverlap overlap{marks.data(), strip, 0};
    Begin();
    return BuildStrip(other, overlap, overlap) == count && overlap.faces == count;
}

void eStripExperiment::Commit(eStripSide start, eStripList& strips, std::vector<std::uint32_t>& taken) {
    Begin();
    taken.clear();
    eGrowthRecord ahead{strips.Growing(), taken};
    eGrowthRecord behind{backward, taken};
    for (; start != noStripSide; start = FindNextStart(start)) {
        backward.clear();
        BuildStrip(start, ahead, behind);
        strips.AddBefore(backward);
        strips.EndStrip();
    }
    for (const std::uint32_t face : taken) {
        marks[face] = committedMark;
    }
}

void eStripExperiment::eGrowthRecord::Face(std::uint32_t number, const eStripFace& face) {
    int adjoining = 0;
    for (const eStripSide across : face.across) {
        adjoining += across >= 0 ? 1 : 0;
    }
    triangles.push_back({{face.v[0], face.v[1], face.v[2]}, static_cast<std::uint8_t>(adjoining), false});
    taken.push_back(number);
}

// The fake face stands before the one over which the strip turns.
void eStripExperiment::eGrowthRecord::TurnOverLast(std::uint16_t n0, std::uint16_t n1) {
    triangles.push_back(triangles.back());
    triangles[triangles.size() - 2] = {{n0, n1, n0}, sidesOfFakeFace, true};
}

// Grows a strip from the face of `start` along its direction, then backward over the side of `start` itself.
// The result is its number of real faces.
template <class Record>
std::uint32_t eStripExperiment::BuildStrip(eStripSide start, Record& ahead, Record& behind) {
    ++strip;
    const eStripFace& first = FaceAt(start);
    ahead.Face(FaceOf(start), first);
    marks[FaceOf(start)] = strip;
    for (const std::uint16_t v : first.v) {
        seen[v] = strip;
    }
    const std::uint32_t aheadCount = Grow<false>(Onward(first, start), ahead);
    const std::uint32_t behindCount = Grow<true>(Back(first, start), behind);
    return 1 + aheadCount + behindCount;
}

// Grows over one end of the strip, from the face behind `next` on, and returns the number of real faces: runs
// along a lane as far as it is open, then turns onto another one.
template <bool isBackward, class Record>
std::uint32_t eStripExperiment::Grow(eStripSide next, Record& record) {
    const std::vector<eStripLanes::ePlace>& places = lanes.Places();
    std::uint32_t count = 0;
    while (IsOpen(next)) {
        const std::uint32_t place = lanes.PlaceOf(next);
        const bool runsUp = lanes.RunsUp(place, next);
        const std::uint32_t end =
            runsUp ? Run<isBackward, 1>(place, record) : Run<isBackward, -1>(place, record);
        if (end == place) {
            break;
        }
        count += runsUp ? end - place : place - end;
        const eStripSide last = runsUp ? places[end - 1].side : Twin(places[end + 1].side);
        const eStripFace& face = FaceAt(last);
        next = Onward(face, last);
        if (!IsOpen(next)) {
            next = Turned(face, last);
            if (IsOpen(next)) {
                record.TurnOverLast(StartVertex(face, last), EndVertex(face, last));
            }
        }
    }
    return count;
}

// Takes the open faces from `place` on along their lane, up (1) or down (-1), and returns the place behind
// them. Backward growth also ends at a face of which the strip has all vertices, as it meets it when it has
// wound round a vertex. Only the vertex opposite the edge can be new: the other two belong to the face
// before.
template <bool isBackward, int step, class Record>
std::uint32_t eStripExperiment::Run(std::uint32_t place, Record& record) {
    // Copies, since for all that the compiler knows a mark that is written may lie over the originals.
    const std::uint32_t mark = strip;
    const std::uint32_t firstMark = firstStrip;
    std::uint32_t* const lastTaken = marks.data();
    std::uint32_t* const lastSeen = seen.data();
    const eStripLanes::ePlace* at = lanes.Places().data() + place;
    while (lastTaken[FaceOf(at->side)] < firstMark && !(isBackward && lastSeen[at[step].vertex] == mark)) {
        record.Face(FaceOf(at->side), FaceAt(at->side));
        lastTaken[FaceOf(at->side)] = mark;
        lastSeen[at[step].vertex] = mark;
        at += step;
    }
    return static_cast<std::uint32_t>(at - lanes.Places().data());
}

// The first place from `place` on whose spoke has a face that is not gone.
template <class IsGone>
std::uint32_t eStripExperiment::SkipSpokes(std::uint32_t place, std::uint32_t end, IsGone&& isGone) const {
    while (place < end && isGone(adjacency.spokes[place].side0) && isGone(adjacency.spokes[place].side1)) {
        ++place;
    }
    return place;
}

// The place of the first spoke of `vertex` with a face that this experiment can still take.
std::uint32_t eStripExperiment::FirstLiveSpoke(std::uint16_t vertex) {
    const std::uint32_t end = adjacency.firstSpoke[vertex + std::size_t{1}];
    eSpokeCursor& cursor = cursors[vertex];
    if (cursor.firstStrip != firstStrip) {
        cursor.uncommitted =
            SkipSpokes(cursor.uncommitted, end, [this](eStripSide side) { return IsCommitted(side); });
        cursor.unmarked = cursor.uncommitted;
        cursor.firstStrip = firstStrip;
    }
    cursor.unmarked = SkipSpokes(cursor.unmarked, end, [this](eStripSide side) { return IsMarked(side); });
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
        const auto [side0, side1] = adjacency.spokes[place];
        if (!IsInStrip(side0) && !IsMarked(side1)) {
            return SharesEdgeWithStrip(side1) ? side1 : Reversed(side1);
        }
        if (!IsInStrip(side1) && !IsMarked(side0)) {
            return SharesEdgeWithStrip(side0) ? side0 : Reversed(side0);
        }
    }
    return noStripSide;
}

// Whether the face of `side` does.
bool eStripExperiment::SharesEdgeWithStrip(eStripSide side) const {
    const auto& across = FaceAt(side).across;
    return std::any_of(std::begin(across), std::end(across),
                       [this](eStripSide other) { return other >= 0 && IsInStrip(other); });
}
