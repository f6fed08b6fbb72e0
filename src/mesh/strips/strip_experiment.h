#pragma once

#include <cstdint>
#include <vector>

#include "mesh/strips/strip_adjacency.h"
#include "mesh/strips/strip_list.h"

// Grows strips over the faces that no committed strip has. An experiment is a chain of strips, each beside
// the one before. Most experiments are made for their value alone and leave nothing behind but marks that no
// later one heeds; the one that wins is made a second time to be committed. Measuring allocates nothing.
//
// Strips are numbered upwards over all experiments. A face's mark is the strip that last took it, so a face
// is taken for the running experiment exactly if its mark is not below the experiment's first strip;
// committed faces have a mark above all strips.
//
// A face reached over an edge holds both vertices of that edge, and no face has two equal vertices. So the
// vertex that a strip runs to next is always the one opposite the edge, and a strip can't be derailed.
class eStripExperiment {
public:
    // Marks the faces of `someAdjacency`, which outlives the experiments. 24 bytes per vertex.
    explicit eStripExperiment(eStripAdjacency& someAdjacency);

    // The value of the experiment that starts over `start`: the average number of real faces per strip, in
    // single precision, in which experiments are compared. 0 as soon as it can't come out above `toBeat`.
    // `uncommitted` is the number of faces that no committed strip has.
    float Measure(eStripSide start, std::size_t uncommitted, float toBeat);

    // Makes the experiment, appends its strips to `strips`, and leaves its real faces in `taken`, in that
    // order.
    void Commit(eStripSide start, eStripList& strips, std::vector<std::uint32_t>& taken);

private:
    static constexpr std::uint64_t committedMark = ~std::uint64_t{0};

    // Where the search through the spokes of a vertex begins. Faces only become marked within an experiment,
    // and only become committed from one to the next, so the spokes before these places are passed just once.
    struct eSpokeCursor {
        std::uint32_t uncommitted;  // all before have two committed faces
        std::uint32_t unmarked;     // all before have two faces marked for the experiment
        std::uint64_t firstStrip;   // of that experiment
    };

    // What one direction of a strip takes, in the order in which it grows.
    struct eGrowthRecord {
        std::vector<eStripTriangle> triangles;
        std::vector<std::uint32_t> faces;  // the real ones by number

        void Face(std::uint32_t number, const eStripFace& face);
        void Fake(std::uint16_t n0, std::uint16_t n1);
        void Clear();
    };

    void Begin() { firstStrip = strip + 1; }
    template <class Record>
    std::uint32_t BuildStrip(eStripSide start, Record& ahead, Record& behind);
    template <bool isBackward, class Record>
    std::uint32_t Grow(eStripSide next, Record& record);
    eStripSide FindNextStart(eStripSide start);
    std::uint32_t FirstLiveSpoke(std::uint16_t vertex);
    template <class IsGone>
    std::uint32_t SkipSpokes(std::uint32_t place, std::uint32_t end, IsGone&& isGone) const;
    bool SharesEdgeWithStrip(const eStripFace& face) const;

    const eStripFace& FaceAt(eStripSide side) const { return faces[FaceOf(side)]; }
    bool IsMarked(const eStripFace& face) const { return face.mark >= firstStrip; }
    bool IsInStrip(const eStripFace& face) const { return face.mark == strip; }

    const eStripAdjacency& adjacency;
    std::vector<eStripFace>& faces;
    std::uint64_t strip = 0;          // the strip under way
    std::uint64_t firstStrip = 1;     // the first one of this experiment
    std::vector<std::uint64_t> seen;  // per vertex the last strip that has it
    std::vector<eSpokeCursor> cursors;
    eGrowthRecord forward;
    eGrowthRecord backward;
};
