#include "mesh/strips/strip_order.h"

#include <algorithm>
#include <span>

#include "mesh/strips/strip_direction.h"
#include "mesh/strips/strip_hubs.h"
#include "mesh/strips/strip_piece_index.h"
#include "mesh/strips/vertex_cache.h"

namespace {

constexpr float firstCost = 10000.0f;
constexpr std::uint32_t noPiece = ~std::uint32_t{0};

// A piece that touches the one drawn last.
struct eCandidate {
    std::uint32_t piece = noPiece;
    float hits = -1.0f;  // cached corners per face
    bool hasWantedDirection = false;
    std::uint32_t touch = 0;  // place of the first vertex that it shares, in the vertices of the last piece

    bool ComesBefore(const eCandidate& other) const {
        return touch != other.touch ? touch < other.touch : piece < other.piece;
    }

    // The most hits win. Of equals the last one in order with the wanted direction is taken; where none has
    // it, the first one. So it doesn't matter in which order candidates are compared.
    bool Beats(const eCandidate& other) const {
        if (hits != other.hits) {
            return hits > other.hits;
        }
        if (hasWantedDirection != other.hasWantedDirection) {
            return hasWantedDirection;
        }
        return hasWantedDirection ? other.ComesBefore(*this) : ComesBefore(other);
    }
};

class ePieceOrder {
public:
    ePieceOrder(const eStripList& somePieces, std::size_t cacheSize, int maxIndex)
        : pieces(somePieces),
          index(somePieces, maxIndex),
          hubs(somePieces, index),
          cache(cacheSize, index.VertexCount()),
          states(somePieces.Size()) {
        for (std::size_t piece = 0; piece < pieces.Size(); ++piece) {
            states[piece].faceCount = static_cast<std::uint32_t>(pieces[piece].size());
            states[piece].startsClockwise = StartsClockwise(pieces[piece]);
        }
    }

    std::vector<std::uint32_t> Run();

private:
    struct ePieceState {
        std::uint32_t cachedCorners = 0;  // hubs not counted
        std::uint32_t lastStep = 0;       // in which it was looked at
        std::uint32_t faceCount = 0;
        bool startsClockwise = false;
        bool isVisited = false;
    };

    std::uint32_t CheapestPiece() const;
    void Output(std::uint32_t piece);
    void AddToCache(std::uint16_t vertex);
    void CountCached(std::uint16_t vertex, bool isCached);
    std::uint32_t BestNeighbour();
    void ConsiderPiecesAtHubs();
    void Consider(std::uint32_t piece, std::uint32_t touch);
    std::uint32_t NextUnvisited();

    std::uint32_t Step() const { return static_cast<std::uint32_t>(order.size()); }
    bool IsVisited(std::uint32_t piece) const { return states[piece].isVisited; }
    template <class Visit>
    void ForEachOpenPiece(std::uint16_t vertex, Visit&& visit) {
        index.ForEachPieceBut([this](std::uint32_t piece) { return IsVisited(piece); }, vertex, visit);
    }

    const eStripList& pieces;
    ePieceIndex index;
    eStripHubs hubs;
    eVertexCache cache;
    std::vector<ePieceState> states;
    std::vector<std::uint32_t> order;
    std::uint32_t firstUnvisited = 0;
    bool wantsClockwise = true;
    eCandidate choice;
};

std::vector<std::uint32_t> ePieceOrder::Run() {
    order.reserve(pieces.Size());
    for (std::uint32_t piece = CheapestPiece(); piece != noPiece;) {
        Output(piece);
        piece = BestNeighbour();
        if (piece == noPiece) {
            piece = NextUnvisited();
        }
    }
    return std::move(order);
}

// The first of the pieces whose faces have the fewest neighbours on average.
std::uint32_t ePieceOrder::CheapestPiece() const {
    std::uint32_t cheapest = 0;
    float lowest = firstCost;
    for (std::uint32_t piece = 0; piece < pieces.Size(); ++piece) {
        int adjoining = 0;
        for (const eStripTriangle& face : pieces[piece]) {
            adjoining += face.adjoining;
        }
        const float cost = static_cast<float>(adjoining) / static_cast<float>(pieces[piece].size());
        if (cost < lowest) {
            lowest = cost;
            cheapest = piece;
        }
    }
    return cheapest;
}

void ePieceOrder::Output(std::uint32_t piece) {
    order.push_back(piece);
    states[piece].isVisited = true;
    hubs.Take(piece);
    for (const eStripTriangle& face : pieces[piece]) {
        for (const std::uint16_t v : face.v) {
            if (!cache.Has(v)) {
                AddToCache(v);
            }
        }
    }
    if (states[piece].faceCount % 2 == 1) {
        wantsClockwise = !wantsClockwise;
    }
}

void ePieceOrder::AddToCache(std::uint16_t vertex) {
    const int evicted = cache.Add(vertex);
    CountCached(vertex, true);
    if (evicted != eVertexCache::noVertex) {
        CountCached(static_cast<std::uint16_t>(evicted), false);
    }
}

void ePieceOrder::CountCached(std::uint16_t vertex, bool isCached) {
    if (hubs.IsHub(vertex)) {
        hubs.SetCached(vertex, isCached);
        return;
    }
    ForEachOpenPiece(vertex, [&](const eVertexPiece& entry) {
        std::uint32_t& cachedCorners = states[entry.piece].cachedCorners;
        cachedCorners = isCached ? cachedCorners + entry.corners : cachedCorners - entry.corners;
    });
}

std::uint32_t ePieceOrder::BestNeighbour() {
    choice = {};
    const std::span<const ePieceVertex> vertices = index.VerticesOf(order.back());
    hubs.Touch(vertices);
    for (std::uint32_t touch = 0; touch < vertices.size(); ++touch) {
        if (!hubs.IsHub(vertices[touch].vertex)) {
            ForEachOpenPiece(vertices[touch].vertex, [&](const eVertexPiece& entry) {
                Consider(entry.piece, std::min(touch, hubs.FirstTouch(entry.piece)));
            });
        }
    }
    if (hubs.IsAnyTouched()) {
        ConsiderPiecesAtHubs();
    }
    return choice.piece;
}

void ePieceOrder::ConsiderPiecesAtHubs() {
    for (const int entry : cache.Entries()) {
        const auto vertex = static_cast<std::uint16_t>(entry);
        if (entry != eVertexCache::noVertex && !hubs.IsHub(vertex)) {
            ForEachOpenPiece(vertex, [&](const eVertexPiece& piece) {
                const std::uint32_t touch = hubs.FirstTouch(piece.piece);
                if (touch != eStripHubs::notTouched) {
                    Consider(piece.piece, touch);
                }
            });
        }
    }
    hubs.ForEachGroup(
        wantsClockwise, [this](std::uint32_t piece) { return states[piece].lastStep == Step(); },
        [this](std::uint32_t piece) { Consider(piece, hubs.FirstTouch(piece)); });
}

void ePieceOrder::Consider(std::uint32_t piece, std::uint32_t touch) {
    ePieceState& state = states[piece];
    if (state.lastStep == Step()) {
        return;
    }
    state.lastStep = Step();
    const std::uint32_t corners = state.cachedCorners + hubs.CachedCorners(piece);
    const float hits = static_cast<float>(corners) / static_cast<float>(state.faceCount);
    const eCandidate candidate{piece, hits, state.startsClockwise == wantsClockwise, touch};
    if (candidate.Beats(choice)) {
        choice = candidate;
    }
}

std::uint32_t ePieceOrder::NextUnvisited() {
    while (firstUnvisited < pieces.Size() && IsVisited(firstUnvisited)) {
        ++firstUnvisited;
    }
    return firstUnvisited < pieces.Size() ? firstUnvisited : noPiece;
}

}  // namespace

std::vector<std::uint32_t> OrderPieces(const eStripList& pieces, std::size_t cacheSize, int maxIndex) {
    return ePieceOrder(pieces, cacheSize, maxIndex).Run();
}
