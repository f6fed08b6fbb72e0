#include "mesh/strips/strip_piece_index.h"

ePieceIndex::ePieceIndex(const eStripList& strips, int maxIndex) {
    const std::size_t vertexCount = static_cast<std::size_t>(maxIndex) + 1;
    ListVertices(strips, vertexCount);
    ListPieces(vertexCount);
}

void ePieceIndex::ListVertices(const eStripList& strips, std::size_t vertexCount) {
    std::vector<std::size_t> entryOfVertex(vertexCount);  // one more than the place of its last entry
    firstVertex.push_back(0);
    for (std::size_t i = 0; i < strips.Size(); ++i) {
        for (const eStripTriangle& face : strips[i]) {
            for (const std::uint16_t v : face.v) {
                if (entryOfVertex[v] <= firstVertex.back()) {
                    vertices.push_back({v, 0});
                    entryOfVertex[v] = vertices.size();
                }
                ++vertices[entryOfVertex[v] - 1].corners;
            }
        }
        firstVertex.push_back(vertices.size());
    }
}

void ePieceIndex::ListPieces(std::size_t vertexCount) {
    firstPiece.assign(vertexCount, 0);
    for (const ePieceVertex& entry : vertices) {
        ++firstPiece[entry.vertex];
    }
    std::size_t sum = 0;
    for (std::size_t& first : firstPiece) {
        const std::size_t count = first;
        first = sum;
        sum += count;
    }
    pieces.resize(sum);
    pieceEnds = firstPiece;
    for (std::uint32_t piece = 0; piece + std::size_t{1} < firstVertex.size(); ++piece) {
        for (const ePieceVertex& entry : VerticesOf(piece)) {
            pieces[pieceEnds[entry.vertex]++] = {piece, entry.corners};
        }
    }
}
