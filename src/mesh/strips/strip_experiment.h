#pragma once

#include <cstdint>
#include <vector>

#include "mesh/strips/strip_adjacency.h"
#include "mesh/strips/strip_lanes.h"
#include "mesh/strips/strip_list.h"

struct eStripMeasure {
    // The average number of real faces per strip, in single precision, in which experiments are compared. 0
    // if it can't come out high enough.
    float value;
    std::uint32_t strips;  // those made
};

// Grows strips over the faces that no committed strip has. An experiment is a chain of strips, each beside
// the one before. Most experiments are made for their value alone and leave nothing behind but marks that no
// later one heeds; the one that wins is made a second time to be committed. Measuring allocates nothing.
//
// Strips are numbered upwards over all experiments. A face's mark is the strip that last took it, so a face
// is taken for the running experiment exactly if its mark is not below the experiment's first strip;
// committed faces have a mark above all strips. The marks are what an experiment walks over, so they are as
// short as they can be; before an experiment whose strips might run out of numbers they begin anew.
//
// A face reached over an edge holds both vertices of that edge, and no face has two equal vertices. So the
// vertex that a strip runs to next is always the one opposite the edge, and a strip can't be derailed.
class eStripExperiment {
public:
    // Reads `someAdjacency`, which outlives the experiments. 42 bytes per face and 16 per vertex. There are
    // `numbers` for strips, more than there are faces.
    explicit eStripExperiment(const eStripAdjacency& someAdjacency, std::uint32_t numbers = committedMark);

    // Measures the experiment that starts over `start`, as long as it can come out above `toBeat`.
    // `uncommitted` is the number of faces that no committed strip has.
    eStripMeasure Measure(eStripSide start, std::size_t uncommitted, float toBeat);

    // True if the first strips of two experiments take the same faces. From a start and its twin all that
    // follows is then the same, and so is the value.
    bool StartAlike(eStripSide start, eStripSide other);

    // Makes the experiment, appends its strips to `strips`, and leaves its real faces in `taken`.
    void Commit(eStripSide start, eStripList& strips, std::vector<std::uint32_t>& taken);

private:
    static constexpr std::uint32_t committedMark = ~std::uint32_t{0};

    // Where the search through the spokes of a vertex begins. Faces only become marked within an experiment,
    // and only become committed from one to the next, so the spokes before these places are passed just once.
    struct eSpokeCursor {
        std::uint32_t uncommitted;  // all before have two committed faces
        std::uint32_t unmarked;     // all before have two faces marked for the experiment
        std::uint32_t firstStrip;   // of that experiment
    };

    // Appends what one direction of a strip takes, in the order in which it grows.
    struct eGrowthRecord {
        std::vector<eStripTriangle>& triangles;
        std::vector<std::uint32_t>& taken;  // the real ones by number

        void Face(std::uint32_t number, const eStripFace& face);
        void TurnOverLast(std::uint16_t n0, std::uint16_t n1);
    };

    // Counts the faces that the strip before the present one took too.
    struct eOverlap {
        const std::uint32_t* marks;
        std::uint32_t strip;
        std::uint32_t faces;

        void Face(std::uint32_t number, const eStripFace&) { faces += marks[number] == strip ? 1 : 0; }
        void TurnOverLast(std::uint16_t, std::uint16_t) {}
    };

    void Begin();
    void NumberAnew();
    template <class Record>
    std::uint32_t BuildStrip(eStripSide start, Record& ahead, Record& behind);
    template <bool isBackward, class Record>
    std::uint32_t Grow(eStripSide next, Record& record);
    template <bool isBackward, int step, class Record>
    std::uint32_t Run(std::uint32_t place, Record& record);
    eStripSide FindNextStart(eStripSide start);
    std::uint32_t FirstLiveSpoke(std::uint16_t vertex);
    template <class IsGone>
    std::uint32_t SkipSpokes(std::uint32_t place, std::uint32_t end, IsGone&& isGone) const;
    bool SharesEdgeWithStrip(eStripSide side) const;

    const eStripFace& FaceAt(eStripSide side) const { return adjacency.faces[FaceOf(side)]; }
    bool IsCommitted(eStripSide side) const { return marks[FaceOf(side)] == committedMark; }
    bool IsMarked(eStripSide side) const { return marks[FaceOf(side)] >= firstStrip; }
    bool IsInStrip(eStripSide side) const { return marks[FaceOf(side)] == strip; }
    bool IsOpen(eStripSide side) const { return side >= 0 && !IsMarked(side); }

    const eStripAdjacency& adjacency;
    const eStripLanes lanes;
    const std::uint32_t numbers;
    std::vector<std::uint32_t> marks;  // per face, and one for the stops of the lanes, which nothing passes
    std::uint32_t strip = 0;           // the strip under way
    std::uint32_t firstStrip = 1;      // the first one of this experiment
    std::vector<std::uint32_t> seen;   // per vertex the last strip that has it
    std::vector<eSpokeCursor> cursors;
    std::vector<eStripTriangle> backward;  // of a strip that is committed
};
