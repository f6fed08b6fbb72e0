#include "mesh/plain_strip_generator.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <memory>
#include <set>

namespace plain {
namespace {

constexpr int cacheMargin = 6;
constexpr int samplesPerPass = 10;
constexpr float seedPositionStep = 0.1f;
constexpr float seedPositionRestart = 0.05f;
constexpr int validationBins = 100;

struct eStripFace {
    int v0, v1, v2;
    int stripId = -1;
    int testStripId = -1;
    int experimentId = -1;
    bool isFake = false;

    std::array<int, 3> Vertices() const { return {v0, v1, v2}; }
    bool Has(int v) const { return v0 == v || v1 == v || v2 == v; }
    bool IsDegenerate() const { return v0 == v1 || v1 == v2 || v0 == v2; }
};

struct eStripEdge {
    eStripFace* face0;
    eStripFace* face1;
    int v0, v1;
    eStripEdge* nextV0;
    eStripEdge* nextV1;

    eStripEdge* Next(int v) const { return v0 == v ? nextV0 : nextV1; }
};

struct eStripStart {
    eStripFace* face;
    eStripEdge* edge;
    bool toV1;
};

struct eStrip {
    eStripStart start{};
    std::vector<eStripFace*> faces;
    int stripId = 0;
    int experimentId = -1;
    bool visited = false;
    int numDegenerates = 0;
    std::deque<eStripFace> fakes;
};

using eExperiment = std::vector<std::unique_ptr<eStrip>>;

class eVertexCache {
public:
    explicit eVertexCache(int cacheSize) : entries(static_cast<std::size_t>(cacheSize), -1) {}
    bool Has(int v) const { return std::find(entries.begin(), entries.end(), v) != entries.end(); }
    void Add(int v) {
        entries.pop_back();
        entries.insert(entries.begin(), v);
    }

private:
    std::vector<int> entries;
};

class eStripifier {
public:
    std::vector<std::unique_ptr<eStrip>> Stripify(const std::vector<std::uint16_t>& indices,
                                                  int stripCacheSize, int maxIndex);

    std::string messages;
    std::vector<std::unique_ptr<eStrip>> committed;

private:
    void BuildStripifyInfo(const std::vector<std::uint16_t>& indices, int maxIndex);
    void GrowStrips();
    std::vector<std::unique_ptr<eStrip>> SplitAndOrderStrips();

    eStripEdge* FindEdge(int v0, int v1) const;
    eStripFace* FindOtherFace(int v0, int v1, const eStripFace* face) const;
    bool AlreadyExists(const eStripFace& face) const;

    eStripFace* FirstSeedFace() const;
    eStripFace* NextSeedFace();
    void Explore(eExperiment& experiment);
    void Commit(eExperiment& experiment);
    void BuildStrip(eStrip& strip);
    void Grow(eStrip& strip, int n0, int n1, const eStripFace* from, std::vector<int>& scratch,
              std::vector<eStripFace*>& grown, std::vector<eStripFace*>* seen);
    int GetNextIndex(const std::vector<int>& indices, const eStripFace& face);
    bool FindNextStart(const eStrip& strip, eStripStart& start) const;
    bool SharesEdgeWith(const eStrip& strip, const eStripFace& face) const;

    std::vector<std::unique_ptr<eStrip>> CutStrips() const;
    float AdjoiningFaces(const eStrip& piece) const;

    int cacheSize = 0;
    float seedPosition = 0.0f;
    bool firstSeed = true;
    int stripIds = 0;
    int experimentIds = 0;
    std::vector<std::unique_ptr<eStripFace>> faces;
    std::deque<eStripEdge> edges;
    std::vector<eStripEdge*> edgesOfVertex;
};

std::vector<std::unique_ptr<eStrip>> eStripifier::Stripify(const std::vector<std::uint16_t>& indices,
                                                           int stripCacheSize, int maxIndex) {
    cacheSize = stripCacheSize - cacheMargin < 2 ? 1 : stripCacheSize - cacheMargin;
    BuildStripifyInfo(indices, maxIndex);
    if (faces.empty()) {
        return {};
    }
    GrowStrips();
    return SplitAndOrderStrips();
}

// ---- adjacency

eStripEdge* eStripifier::FindEdge(int v0, int v1) const {
    for (eStripEdge* edge = edgesOfVertex[static_cast<std::size_t>(v0)]; edge; edge = edge->Next(v0)) {
        if ((edge->v0 == v0 && edge->v1 == v1) || (edge->v0 == v1 && edge->v1 == v0)) {
            return edge;
        }
    }
    return nullptr;
}

eStripFace* eStripifier::FindOtherFace(int v0, int v1, const eStripFace* face) const {
    const eStripEdge* edge = FindEdge(v0, v1);
    if (!edge) {
        return nullptr;
    }
    return edge->face0 == face ? edge->face1 : edge->face0;
}

bool eStripifier::AlreadyExists(const eStripFace& face) const {
    for (const auto& other : faces) {
        if (other->v0 == face.v0 && other->v1 == face.v1 && other->v2 == face.v2) {
            return true;
        }
    }
    return false;
}

void eStripifier::BuildStripifyInfo(const std::vector<std::uint16_t>& indices, int maxIndex) {
    edgesOfVertex.assign(static_cast<std::size_t>(maxIndex) + 1, nullptr);
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        auto face = std::make_unique<eStripFace>(eStripFace{indices[i], indices[i + 1], indices[i + 2]});
        if (face->IsDegenerate()) {
            continue;
        }
        bool mayExist = true;
        std::vector<eStripEdge*> changed;
        const std::array<int, 3> v = face->Vertices();
        for (std::size_t side = 0; side < 3; ++side) {
            const int a = v[side];
            const int b = v[(side + 1) % 3];
            eStripEdge* edge = FindEdge(a, b);
            if (!edge) {
                eStripEdge*& headA = edgesOfVertex[static_cast<std::size_t>(a)];
                eStripEdge*& headB = edgesOfVertex[static_cast<std::size_t>(b)];
                edges.push_back({face.get(), nullptr, a, b, headA, headB});
                headA = headB = &edges.back();
                mayExist = false;
            } else if (!edge->face1) {
                edge->face1 = face.get();
                changed.push_back(edge);
            } else {
                messages += "BuildStripifyInfo: > 2 triangles on an edge... uncertain consequences\n";
            }
        }
        if (mayExist && AlreadyExists(*face)) {
            for (eStripEdge* edge : changed) {
                edge->face1 = nullptr;
            }
            continue;
        }
        faces.push_back(std::move(face));
    }
}

// ---- growing

bool IsMarked(const eStripFace* face, const eStrip& strip) {
    return face->stripId >= 0 || (strip.experimentId >= 0 && face->experimentId == strip.experimentId);
}

bool IsInStrip(const eStripFace* face, const eStrip& strip) {
    return (strip.experimentId >= 0 ? face->testStripId : face->stripId) == strip.stripId;
}

void Mark(eStripFace* face, const eStrip& strip) {
    if (strip.experimentId >= 0) {
        face->experimentId = strip.experimentId;
        face->testStripId = strip.stripId;
    } else {
        face->stripId = strip.stripId;
        face->experimentId = -1;
    }
}

eStripFace* eStripifier::FirstSeedFace() const {
    int most = 0;
    eStripFace* result = nullptr;
    for (const auto& face : faces) {
        const int open = !FindOtherFace(face->v0, face->v1, face.get()) +
                         !FindOtherFace(face->v1, face->v2, face.get()) +
                         !FindOtherFace(face->v2, face->v0, face.get());
        if (open > most) {
            most = open;
            result = face.get();
        }
    }
    return result;
}

eStripFace* eStripifier::NextSeedFace() {
    std::size_t index = static_cast<std::size_t>(static_cast<float>(faces.size() - 1) * seedPosition);
    if (firstSeed) {
        firstSeed = false;
        if (const eStripFace* first = FirstSeedFace()) {
            index = 0;
            while (faces[index].get() != first) {
                ++index;
            }
        }
    }
    eStripFace* result = nullptr;
    for (std::size_t step = 0; step < faces.size() && !result; ++step) {
        eStripFace* face = faces[(index + step) % faces.size()].get();
        if (face->stripId < 0) {
            result = face;
        }
    }
    seedPosition += seedPositionStep;
    if (seedPosition > 1.0f) {
        seedPosition = seedPositionRestart;
    }
    return result;
}

void eStripifier::GrowStrips() {
    for (;;) {
        bool lastPass = false;
        std::vector<eExperiment> experiments;
        std::set<const eStripFace*> used;
        for (int sample = 0; sample < samplesPerPass; ++sample) {
            eStripFace* seed = NextSeedFace();
            if (!seed) {
                lastPass = true;
                break;
            }
            if (!used.insert(seed).second) {
                continue;
            }
            const std::array<int, 3> v = seed->Vertices();
            for (std::size_t side = 0; side < 3; ++side) {
                for (const bool toV1 : {true, false}) {
                    auto strip = std::make_unique<eStrip>();
                    strip->start = {seed, FindEdge(v[side], v[(side + 1) % 3]), toV1};
                    strip->stripId = stripIds++;
                    strip->experimentId = experimentIds++;
                    experiments.emplace_back();
                    experiments.back().push_back(std::move(strip));
                }
            }
        }
        std::size_t winner = 0;
        float highest = 0.0f;
        for (std::size_t i = 0; i < experiments.size(); ++i) {
            Explore(experiments[i]);
            int realFaces = 0;
            for (const auto& strip : experiments[i]) {
                realFaces += static_cast<int>(strip->faces.size()) - strip->numDegenerates;
            }
            const float value = static_cast<float>(realFaces) / static_cast<float>(experiments[i].size());
            if (value > highest) {
                highest = value;
                winner = i;
            }
        }
        if (!experiments.empty()) {
            Commit(experiments[winner]);
        }
        if (lastPass) {
            return;
        }
    }
}

void eStripifier::Explore(eExperiment& experiment) {
    BuildStrip(*experiment.front());
    eStripStart start{};
    while (FindNextStart(*experiment.back(), start)) {
        auto strip = std::make_unique<eStrip>();
        strip->start = start;
        strip->stripId = stripIds++;
        strip->experimentId = experiment.front()->experimentId;
        BuildStrip(*strip);
        experiment.push_back(std::move(strip));
    }
}

void eStripifier::Commit(eExperiment& experiment) {
    for (auto& strip : experiment) {
        strip->experimentId = -1;
        for (eStripFace* face : strip->faces) {
            Mark(face, *strip);
        }
        committed.push_back(std::move(strip));
    }
}

int eStripifier::GetNextIndex(const std::vector<int>& indices, const eStripFace& face) {
    const int p = indices[indices.size() - 2];
    const int q = indices[indices.size() - 1];
    const std::array<int, 3> v = face.Vertices();
    for (std::size_t i = 0; i < 3; ++i) {
        if (v[i] != p && v[i] != q) {
            const int left = v[(i + 1) % 3];
            const int right = v[(i + 2) % 3];
            if (!((left == p && right == q) || (left == q && right == p))) {
                messages += "GetNextIndex: Triangle doesn't have all of its vertices\n";
                messages += "GetNextIndex: Duplicate triangle probably got us derailed\n";
            }
            return v[i];
        }
    }
    if (v[0] == v[1] || v[0] == v[2]) {
        return v[0];
    }
    return v[1] == v[2] ? v[1] : -1;
}

bool HasUniqueVertex(const eStripFace& face, const std::vector<eStripFace*>& seen) {
    for (const int v : face.Vertices()) {
        if (std::none_of(seen.begin(), seen.end(), [v](const eStripFace* other) { return other->Has(v); })) {
            return true;
        }
    }
    return false;
}

void eStripifier::BuildStrip(eStrip& strip) {
    std::vector<eStripFace*> forward;
    std::vector<eStripFace*> backward;
    eStripFace* first = strip.start.face;
    forward.push_back(first);
    Mark(first, strip);
    const int a = strip.start.toV1 ? strip.start.edge->v0 : strip.start.edge->v1;
    const int b = strip.start.toV1 ? strip.start.edge->v1 : strip.start.edge->v0;
    std::vector<int> scratch{a, b};
    const int c = GetNextIndex(scratch, *first);
    scratch.push_back(c);
    Grow(strip, b, c, first, scratch, forward, nullptr);

    std::vector<eStripFace*> seen = forward;
    scratch = {c, b, a};
    Grow(strip, b, a, first, scratch, backward, &seen);

    strip.faces.assign(backward.rbegin(), backward.rend());
    strip.faces.insert(strip.faces.end(), forward.begin(), forward.end());
}

void eStripifier::Grow(eStrip& strip, int n0, int n1, const eStripFace* from, std::vector<int>& scratch,
                       std::vector<eStripFace*>& grown, std::vector<eStripFace*>* seen) {
    eStripFace* next = FindOtherFace(n0, n1, from);
    while (next && !IsMarked(next, strip) && (!seen || HasUniqueVertex(*next, *seen))) {
        int t0 = n1;
        const int t1 = GetNextIndex(scratch, *next);
        const eStripFace* after = FindOtherFace(t0, t1, next);
        if (!after || IsMarked(after, strip)) {
            const eStripFace* turn = FindOtherFace(n0, t1, next);
            if (turn && !IsMarked(turn, strip)) {
                strip.fakes.push_back({n0, n1, n0});
                eStripFace* fake = &strip.fakes.back();
                fake->isFake = true;
                grown.push_back(fake);
                Mark(fake, strip);
                scratch.push_back(n0);
                ++strip.numDegenerates;
                t0 = n0;
            }
        }
        grown.push_back(next);
        if (seen) {
            seen->push_back(next);
        }
        Mark(next, strip);
        scratch.push_back(t1);
        n0 = t0;
        n1 = t1;
        next = FindOtherFace(n0, n1, next);
    }
}

bool eStripifier::SharesEdgeWith(const eStrip& strip, const eStripFace& face) const {
    const std::array<int, 3> v = face.Vertices();
    for (std::size_t side = 0; side < 3; ++side) {
        const eStripFace* other = FindOtherFace(v[side], v[(side + 1) % 3], &face);
        if (other && IsInStrip(other, strip)) {
            return true;
        }
    }
    return false;
}

bool eStripifier::FindNextStart(const eStrip& strip, eStripStart& start) const {
    const int v = strip.start.toV1 ? strip.start.edge->v1 : strip.start.edge->v0;
    for (eStripEdge* edge = edgesOfVertex[static_cast<std::size_t>(v)]; edge; edge = edge->Next(v)) {
        eStripFace* face = nullptr;
        if (edge->face0 && !IsInStrip(edge->face0, strip) && edge->face1 && !IsMarked(edge->face1, strip)) {
            face = edge->face1;
        } else if (edge->face1 && !IsInStrip(edge->face1, strip) && edge->face0 &&
                   !IsMarked(edge->face0, strip)) {
            face = edge->face0;
        }
        if (face) {
            start = {face, edge, SharesEdgeWith(strip, *face) ? edge->v0 == v : edge->v1 == v};
            return true;
        }
    }
    return false;
}

// ---- cutting

int CountReal(const std::vector<eStripFace*>& faces) {
    return static_cast<int>(
        std::count_if(faces.begin(), faces.end(), [](auto* face) { return !face->IsDegenerate(); }));
}

std::vector<std::unique_ptr<eStrip>> eStripifier::CutStrips() const {
    std::vector<std::unique_ptr<eStrip>> pieces;
    const auto newPiece = [&pieces]() -> std::vector<eStripFace*>& {
        pieces.push_back(std::make_unique<eStrip>());
        return pieces.back()->faces;
    };
    const int limit = cacheSize;
    for (const auto& strip : committed) {
        const std::vector<eStripFace*>& from = strip->faces;
        const int count = CountReal(from);
        if (count <= limit) {
            newPiece() = from;
            continue;
        }
        const int times = count / limit;
        int leftover = count % limit;
        int degenerates = 0;
        for (int j = 0; j < times; ++j) {
            std::vector<eStripFace*>& piece = newPiece();
            const bool lastPiece = j == times - 1;
            bool hasReal = false;
            int index = j * limit + degenerates;
            for (; index < (j + 1) * limit + degenerates; ++index) {
                eStripFace* face = from[static_cast<std::size_t>(index)];
                if (!face->IsDegenerate()) {
                    piece.push_back(face);
                    hasReal = true;
                    continue;
                }
                ++degenerates;
                const bool lastPlace = index + 1 == (j + 1) * limit + degenerates;
                if (hasReal && (!lastPlace || (lastPiece && leftover >= 1 && leftover <= 3))) {
                    piece.push_back(face);
                }
            }
            if (lastPiece && leftover >= 1 && leftover <= 3) {
                for (; leftover > 0; ++index) {
                    eStripFace* face = from[static_cast<std::size_t>(index)];
                    piece.push_back(face);
                    leftover -= face->IsDegenerate() ? 0 : 1;
                }
            }
        }
        if (leftover > 0) {
            std::vector<eStripFace*>& piece = newPiece();
            for (int index = times * limit + degenerates; leftover > 0; ++index) {
                eStripFace* face = from[static_cast<std::size_t>(index)];
                if (!face->IsDegenerate()) {
                    piece.push_back(face);
                    --leftover;
                } else if (!piece.empty()) {
                    piece.push_back(face);
                }
            }
        }
    }
    return pieces;
}

// ---- ordering

float eStripifier::AdjoiningFaces(const eStrip& piece) const {
    int count = 0;
    for (const eStripFace* face : piece.faces) {
        count += FindOtherFace(face->v0, face->v1, face) ? 1 : 0;
        count += FindOtherFace(face->v1, face->v2, face) ? 1 : 0;
        count += FindOtherFace(face->v2, face->v0, face) ? 1 : 0;
    }
    return static_cast<float>(count) / static_cast<float>(piece.faces.size());
}

float CacheHits(const eStrip& piece, const eVertexCache& cache) {
    int hits = 0;
    for (const eStripFace* face : piece.faces) {
        for (const int v : face->Vertices()) {
            hits += cache.Has(v) ? 1 : 0;
        }
    }
    return static_cast<float>(hits) / static_cast<float>(piece.faces.size());
}

bool StartsClockwise(const eStrip& piece) {
    const eStripFace& first = *piece.faces[0];
    int x = first.v0;
    int y = first.v1;
    int z = first.v2;
    if (piece.faces.size() > 1) {
        for (const int v : first.Vertices()) {
            if (!piece.faces[1]->Has(v)) {
                if (v == y) {
                    std::swap(x, y);
                } else if (v == z) {
                    std::swap(x, z);
                }
                break;
            }
        }
    }
    if (piece.faces.size() > 2) {
        const eStripFace& third = *piece.faces[2];
        if (third.Has(x) + third.Has(y) + third.Has(z) == 1 && third.Has(y)) {
            y = z;
        }
    }
    if (first.v0 == x) {
        return first.v1 == y;
    }
    if (first.v1 == x) {
        return first.v2 == y;
    }
    return first.v0 == y;
}

std::vector<std::unique_ptr<eStrip>> eStripifier::SplitAndOrderStrips() {
    std::vector<std::unique_ptr<eStrip>> pieces = CutStrips();
    eVertexCache cache(cacheSize);
    std::map<int, std::vector<std::size_t>> piecesOfVertex;
    std::size_t first = 0;
    float lowest = 10000.0f;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const float cost = AdjoiningFaces(*pieces[i]);
        if (cost < lowest) {
            lowest = cost;
            first = i;
        }
        for (const eStripFace* face : pieces[i]->faces) {
            for (const int v : face->Vertices()) {
                std::vector<std::size_t>& list = piecesOfVertex[v];
                if (list.empty() || list.back() != i) {
                    list.push_back(i);
                }
            }
        }
    }

    std::vector<std::size_t> order;
    const auto output = [&](std::size_t choice) {
        order.push_back(choice);
        pieces[choice]->visited = true;
        for (const eStripFace* face : pieces[choice]->faces) {
            for (const int v : face->Vertices()) {
                if (!cache.Has(v)) {
                    cache.Add(v);
                }
            }
        }
    };
    output(first);
    bool wantsCW = pieces[first]->faces.size() % 2 == 0;
    for (;;) {
        std::vector<std::size_t> candidates;
        std::vector<bool> isCandidate(pieces.size());
        for (const eStripFace* face : pieces[order.back()]->faces) {
            for (const int v : face->Vertices()) {
                for (const std::size_t piece : piecesOfVertex[v]) {
                    if (!isCandidate[piece]) {
                        isCandidate[piece] = true;
                        candidates.push_back(piece);
                    }
                }
            }
        }
        float best = -1.0f;
        std::size_t choice = pieces.size();
        for (const std::size_t candidate : candidates) {
            if (pieces[candidate]->visited) {
                continue;
            }
            const float hits = CacheHits(*pieces[candidate], cache);
            if (hits > best) {
                best = hits;
                choice = candidate;
            } else if (hits == best && StartsClockwise(*pieces[candidate]) == wantsCW) {
                choice = candidate;
            }
        }
        if (choice == pieces.size()) {
            choice = 0;
            while (choice < pieces.size() && pieces[choice]->visited) {
                ++choice;
            }
            if (choice == pieces.size()) {
                break;
            }
        }
        output(choice);
        if (pieces[choice]->faces.size() % 2 == 1) {
            wantsCW = !wantsCW;
        }
    }
    std::vector<std::unique_ptr<eStrip>> result;
    for (const std::size_t piece : order) {
        result.push_back(std::move(pieces[piece]));
    }
    return result;
}

// ---- result

bool IsSameTriangle(const std::array<int, 3>& a, const std::array<int, 3>& b) {
    return a == b || a == std::array<int, 3>{b[1], b[2], b[0]} || a == std::array<int, 3>{b[2], b[0], b[1]};
}

bool Validate(const std::vector<std::uint16_t>& input, const std::vector<std::uint16_t>& output) {
    std::array<std::vector<std::array<int, 3>>, validationBins> bins;
    for (std::size_t i = 0; i + 2 < input.size(); i += 3) {
        bins[input[i] % validationBins].push_back({input[i], input[i + 1], input[i + 2]});
    }
    for (std::size_t i = 0; i + 2 < output.size(); i += 3) {
        const std::array<int, 3> triangle{output[i], output[i + 1], output[i + 2]};
        const bool found = std::any_of(triangle.begin(), triangle.end(), [&](int v) {
            const auto& bin = bins[static_cast<std::size_t>(v % validationBins)];
            return std::any_of(bin.begin(), bin.end(),
                               [&](const auto& other) { return IsSameTriangle(other, triangle); });
        });
        if (!found) {
            return false;
        }
    }
    return true;
}

}  // namespace

eStripResult GenerateStrips(const std::vector<std::uint16_t>& indices, int stripCacheSize) {
    eStripResult result;
    const int maxIndex = indices.empty() ? 0 : *std::max_element(indices.begin(), indices.end());
    eStripifier stripifier;
    const std::vector<std::unique_ptr<eStrip>> strips =
        stripifier.Stripify(indices, stripCacheSize, maxIndex);
    result.messages = stripifier.messages;
    for (const auto& strip : strips) {
        for (const eStripFace* face : strip->faces) {
            if (!face->IsDegenerate()) {
                for (const int v : face->Vertices()) {
                    result.indices.push_back(static_cast<std::uint16_t>(v));
                }
            }
        }
    }
    result.succeeded = !strips.empty() && Validate(indices, result.indices);
    return result;
}

}  // namespace plain
