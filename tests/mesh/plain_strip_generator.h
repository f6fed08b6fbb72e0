// The strip generator once more, slow and plain: lists are searched, every experiment is made and kept in
// full, and nothing is remembered from one pass to the next. The fast one must give the same triangles in the
// same order and say the same lines.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace plain {

struct eFace {
    std::array<int, 3> v;
    int stripId = -1, testStripId = -1, experimentId = -1;

    bool Has(int vertex) const { return std::ranges::find(v, vertex) != v.end(); }
    bool IsDegenerate() const { return v[0] == v[1] || v[1] == v[2] || v[2] == v[0]; }
};

using eFaces = std::vector<eFace*>;

struct eEdge {
    int v0, v1;
    eFace* face0;
    eFace* face1;
};

struct eStrip {
    eFace* face;
    const eEdge* edge;
    bool toV1;
    int stripId;
    int experimentId;
    eFaces faces{};
    std::list<eFace> fakes{};  // those among `faces` that turn the strip

    int From() const { return toV1 ? edge->v0 : edge->v1; }
    int To() const { return toV1 ? edge->v1 : edge->v0; }
};

inline std::size_t CountReal(const eFaces& faces) {
    return static_cast<std::size_t>(
        std::ranges::count_if(faces, [](const eFace* face) { return !face->IsDegenerate(); }));
}

class eStripGenerator {
public:
    std::vector<std::uint16_t> Run(const std::vector<std::uint16_t>& indices, int cacheSize) {
        limit = static_cast<std::size_t>(cacheSize - 6 < 2 ? 1 : cacheSize - 6);
        BuildInfo(indices);
        while (!faces.empty() && GrowPass()) {
        }
        Cut();
        std::vector<std::uint16_t> result;
        for (const std::size_t piece : Order()) {
            for (const eFace* face : pieces[piece]) {
                if (!face->IsDegenerate()) {
                    result.insert(result.end(), face->v.begin(), face->v.end());
                }
            }
        }
        return result;
    }

    std::string messages;

private:
    // ---- who adjoins whom

    eEdge* FindEdge(int a, int b) {
        const auto& list = edgesOf[a];
        const auto found = std::ranges::find_if(
            list, [&](eEdge* edge) { return (edge->v0 == a ? edge->v1 : edge->v0) == b; });
        return found != list.end() ? *found : nullptr;
    }

    eFace* Other(int a, int b, const eFace* face) {
        const eEdge* edge = FindEdge(a, b);
        return edge == nullptr ? nullptr : edge->face0 == face ? edge->face1 : edge->face0;
    }

    eFaces Neighbours(const eFace* face) {
        eFaces neighbours;
        for (std::size_t side = 0; side < 3; ++side) {
            if (eFace* other = Other(face->v[side], face->v[(side + 1) % 3], face)) {
                neighbours.push_back(other);
            }
        }
        return neighbours;
    }

    void BuildInfo(const std::vector<std::uint16_t>& indices) {
        for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
            eFace& face = pool.emplace_back(eFace{{indices[i], indices[i + 1], indices[i + 2]}});
            if (face.IsDegenerate()) {
                continue;
            }
            bool mayExist = true;
            std::vector<eEdge*> changed;
            for (std::size_t side = 0; side < 3; ++side) {
                const int a = face.v[side], b = face.v[(side + 1) % 3];
                eEdge* edge = FindEdge(a, b);
                if (edge == nullptr) {
                    edges.push_back({a, b, &face, nullptr});
                    edgesOf[a].push_front(&edges.back());
                    edgesOf[b].push_front(&edges.back());
                    mayExist = false;
                } else if (edge->face1 == nullptr) {
                    edge->face1 = &face;
                    changed.push_back(edge);
                } else {
                    messages += "BuildStripifyInfo: > 2 triangles on an edge... uncertain consequences\n";
                }
            }
            if (mayExist && std::ranges::any_of(faces, [&](eFace* other) { return other->v == face.v; })) {
                for (eEdge* edge : changed) {
                    edge->face1 = nullptr;
                }
            } else {
                faces.push_back(&face);
            }
        }
    }

    // ---- growing

    static bool IsMarked(const eFace* face, const eStrip& strip) {
        return face->stripId >= 0 || face->experimentId == strip.experimentId;
    }

    static void Mark(eFace* face, const eStrip& strip) {
        face->experimentId = strip.experimentId;
        face->testStripId = strip.stripId;
    }

    eFace* NextSeed() {
        auto start = static_cast<std::size_t>(static_cast<float>(faces.size() - 1) * seedPosition);
        if (std::exchange(isFirstSeed, false)) {
            std::size_t fewest = 3;
            for (std::size_t i = 0; i < faces.size(); ++i) {
                if (const std::size_t count = Neighbours(faces[i]).size(); count < fewest) {
                    fewest = count;
                    start = i;
                }
            }
        }
        seedPosition += 0.1F;
        seedPosition = seedPosition > 1.0F ? 0.05F : seedPosition;
        for (std::size_t step = 0; step < faces.size(); ++step) {
            if (eFace* face = faces[(start + step) % faces.size()]; face->stripId < 0) {
                return face;
            }
        }
        return nullptr;
    }

    // False after the last pass.
    bool GrowPass() {
        std::vector<std::vector<eStrip>> experiments;
        std::set<const eFace*> used;
        bool isLast = false;
        for (int sample = 0; sample < 10 && !isLast; ++sample) {
            eFace* seed = NextSeed();
            isLast = seed == nullptr;
            if (isLast || !used.insert(seed).second) {
                continue;
            }
            for (std::size_t side = 0; side < 3; ++side) {
                const eEdge* edge = FindEdge(seed->v[side], seed->v[(side + 1) % 3]);
                for (const bool toV1 : {true, false}) {
                    experiments.emplace_back().push_back({seed, edge, toV1, stripIds++, experimentIds++});
                }
            }
        }
        std::size_t winner = 0;
        float highest = 0;
        for (std::size_t i = 0; i < experiments.size(); ++i) {
            Explore(experiments[i]);
            std::size_t real = 0;
            for (const eStrip& strip : experiments[i]) {
                real += CountReal(strip.faces);
            }
            const float value = static_cast<float>(real) / static_cast<float>(experiments[i].size());
            if (value > highest) {
                highest = value;
                winner = i;
            }
        }
        if (!experiments.empty()) {
            Commit(experiments[winner]);
        }
        return !isLast;
    }

    void Explore(std::vector<eStrip>& strips) {
        Build(strips.front());
        while (std::optional<eStrip> next = NextStart(strips.back())) {
            Build(*next);
            strips.push_back(std::move(*next));
        }
    }

    void Commit(std::vector<eStrip>& strips) {
        for (eStrip& strip : strips) {
            for (eFace* face : strip.faces) {
                face->stripId = strip.stripId;
                face->experimentId = -1;
            }
            committed.push_back(std::move(strip));
        }
    }

    std::optional<eStrip> NextStart(const eStrip& strip) {
        const int v = strip.To();
        for (const eEdge* edge : edgesOf[v]) {
            for (const auto& [beside, face] :
                 {std::pair(edge->face0, edge->face1), std::pair(edge->face1, edge->face0)}) {
                if (beside != nullptr && beside->testStripId != strip.stripId && face != nullptr &&
                    !IsMarked(face, strip)) {
                    const bool sharesEdge = std::ranges::any_of(Neighbours(face), [&](const eFace* other) {
                        return other->testStripId == strip.stripId;
                    });
                    return eStrip{face, edge, sharesEdge == (edge->v0 == v), stripIds++, strip.experimentId};
                }
            }
        }
        return std::nullopt;
    }

    int NextIndex(int p, int q, const eFace& face) {
        const auto at = std::ranges::find_if(face.v, [&](int v) { return v != p && v != q; });
        if (!face.Has(p) || !face.Has(q)) {
            messages += "GetNextIndex: Triangle doesn't have all of its vertices\n";
            messages += "GetNextIndex: Duplicate triangle probably got us derailed\n";
        }
        return *at;
    }

    void Build(eStrip& strip) {
        const int a = strip.From(), b = strip.To(), c = NextIndex(a, b, *strip.face);
        Mark(strip.face, strip);
        eFaces forward{strip.face}, backward;
        Grow(strip, b, c, forward, nullptr);
        eFaces seen = forward;
        Grow(strip, b, a, backward, &seen);
        strip.faces.assign(backward.rbegin(), backward.rend());
        strip.faces.insert(strip.faces.end(), forward.begin(), forward.end());
    }

    // Backward, a face must have a vertex that none of those seen has.
    void Grow(eStrip& strip, int n0, int n1, eFaces& grown, eFaces* seen) {
        const auto isNew = [&](int v) {
            return std::ranges::none_of(*seen, [v](const eFace* face) { return face->Has(v); });
        };
        for (eFace* next = Other(n0, n1, strip.face);
             next != nullptr && !IsMarked(next, strip) &&
             (seen == nullptr || std::ranges::any_of(next->v, isNew));
             next = Other(n0, n1, next)) {
            int t0 = n1;
            const int t1 = NextIndex(n0, n1, *next);
            const eFace* after = Other(t0, t1, next);
            const eFace* turn = Other(n0, t1, next);
            if ((after == nullptr || IsMarked(after, strip)) && turn != nullptr && !IsMarked(turn, strip)) {
                grown.push_back(&strip.fakes.emplace_back(eFace{{n0, n1, n0}}));
                t0 = n0;
            }
            grown.push_back(next);
            if (seen != nullptr) {
                seen->push_back(next);
            }
            Mark(next, strip);
            n0 = t0;
            n1 = t1;
        }
    }

    // ---- cutting and ordering

    // Pieces of `limit` real faces each; up to three left over stay with the last one. Fake faces go where no
    // real one is ahead of them in the piece.
    void Cut() {
        for (const eStrip& strip : committed) {
            std::size_t left = CountReal(strip.faces);
            if (left <= limit) {
                pieces.push_back(strip.faces);
                continue;
            }
            std::size_t room = 0;
            for (eFace* face : strip.faces) {
                if (face->IsDegenerate()) {
                    if (room > 0) {
                        pieces.back().push_back(face);
                    }
                    continue;
                }
                if (room == 0) {
                    room = left < limit + 4 ? left : limit;
                    room = left >= 2 * limit ? limit : room;
                    pieces.emplace_back();
                }
                pieces.back().push_back(face);
                --room;
                --left;
            }
        }
    }

    float Cost(const eFaces& piece) {
        std::size_t adjoining = 0;
        for (const eFace* face : piece) {
            adjoining += Neighbours(face).size();
        }
        return static_cast<float>(adjoining) / static_cast<float>(piece.size());
    }

    float Hits(const eFaces& piece) const {
        std::ptrdiff_t hits = 0;
        for (const eFace* face : piece) {
            hits += std::ranges::count_if(face->v,
                                          [&](int v) { return std::ranges::find(cache, v) != cache.end(); });
        }
        return static_cast<float>(hits) / static_cast<float>(piece.size());
    }

    static bool StartsClockwise(const eFaces& piece) {
        const std::array<int, 3>& v = piece[0]->v;
        auto [x, y, z] = v;
        if (piece.size() > 1 && piece[1]->Has(x)) {
            if (!piece[1]->Has(y)) {
                std::swap(x, y);
            } else if (!piece[1]->Has(z)) {
                std::swap(x, z);
            }
        }
        if (piece.size() > 2 && piece[2]->Has(y) && !piece[2]->Has(x) && !piece[2]->Has(z)) {
            y = z;
        }
        return v[0] == x ? v[1] == y : v[1] == x ? v[2] == y : v[0] == y;
    }

    void AddToCache(const eFaces& piece) {
        for (const eFace* face : piece) {
            for (const int v : face->v) {
                if (std::ranges::find(cache, v) == cache.end()) {
                    cache.pop_back();
                    cache.push_front(v);
                }
            }
        }
    }

    std::vector<std::size_t> Order() {
        std::map<int, std::vector<std::size_t>> piecesOf;
        std::size_t choice = 0;
        float lowest = 10000;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            if (const float cost = Cost(pieces[i]); cost < lowest) {
                lowest = cost;
                choice = i;
            }
            for (const eFace* face : pieces[i]) {
                for (const int v : face->v) {
                    piecesOf[v].push_back(i);
                }
            }
        }
        cache.assign(limit, -1);
        std::vector<std::size_t> order;
        std::vector<bool> visited(pieces.size());
        bool wantsClockwise = true;
        while (choice < pieces.size()) {
            const eFaces& last = pieces[choice];
            order.push_back(choice);
            visited[choice] = true;
            AddToCache(last);
            wantsClockwise = wantsClockwise == (last.size() % 2 == 0);
            choice = pieces.size();
            float best = -1;
            std::set<std::size_t> seen;
            for (const eFace* face : last) {
                for (const int v : face->v) {
                    for (const std::size_t candidate : piecesOf[v]) {
                        if (visited[candidate] || !seen.insert(candidate).second) {
                            continue;
                        }
                        const float hits = Hits(pieces[candidate]);
                        if (hits > best ||
                            (hits == best && StartsClockwise(pieces[candidate]) == wantsClockwise)) {
                            best = hits;
                            choice = candidate;
                        }
                    }
                }
            }
            if (choice == pieces.size()) {
                choice = static_cast<std::size_t>(std::ranges::find(visited, false) - visited.begin());
            }
        }
        return order;
    }

    std::size_t limit = 0;
    float seedPosition = 0;
    bool isFirstSeed = true;
    int stripIds = 0, experimentIds = 0;
    std::deque<eFace> pool;
    eFaces faces;
    std::deque<eEdge> edges;
    std::map<int, std::deque<eEdge*>> edgesOf;  // by vertex, the newest first
    std::vector<eStrip> committed;
    std::vector<eFaces> pieces;
    std::deque<int> cache;
};

}  // namespace plain
