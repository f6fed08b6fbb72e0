#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "mesh/strips/strip_list.h"

// Which vertices a piece touches, and which pieces touch a vertex.

struct ePieceVertex {
    std::uint16_t vertex;
    std::uint32_t corners;  // corners of the piece's faces at the vertex
};

struct eVertexPiece {
    std::uint32_t piece;
    std::uint32_t corners;
};

class ePieceIndex {
public:
    // No vertex of `pieces` is above `maxIndex`. Linear; 16 bytes per vertex of a piece.
    ePieceIndex(const eStripList& pieces, int maxIndex);

    std::size_t VertexCount() const { return pieceEnds.size(); }

    // Each vertex once, in the order in which the faces first name them.
    std::span<const ePieceVertex> VerticesOf(std::uint32_t piece) const {
        return std::span(vertices).subspan(firstVertex[piece],
                                           firstVertex[piece + std::size_t{1}] - firstVertex[piece]);
    }

    // Each piece once, in ascending order, but those that were dropped.
    std::span<const eVertexPiece> PiecesOf(std::uint16_t vertex) const {
        return std::span(pieces).subspan(firstPiece[vertex], pieceEnds[vertex] - firstPiece[vertex]);
    }

    // Calls `visit(entry)` for each piece of the vertex that is not `isDone(piece)`, and drops the others, so
    // that no later call comes by them again.
    template <class IsDone, class Visit>
    void ForEachPieceBut(IsDone&& isDone, std::uint16_t vertex, Visit&& visit) {
        std::size_t kept = firstPiece[vertex];
        for (std::size_t i = kept; i < pieceEnds[vertex]; ++i) {
            const eVertexPiece entry = pieces[i];
            if (!isDone(entry.piece)) {
                pieces[kept++] = entry;
                visit(entry);
            }
        }
        pieceEnds[vertex] = kept;
    }

private:
    void ListVertices(const eStripList& strips, std::size_t vertexCount);
    void ListPieces(std::size_t vertexCount);

    std::vector<ePieceVertex> vertices;
    std::vector<std::size_t> firstVertex;  // per piece and one more
    std::vector<eVertexPiece> pieces;
    std::vector<std::size_t> firstPiece;  // per vertex
    std::vector<std::size_t> pieceEnds;   // per vertex
};
