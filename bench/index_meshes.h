// Triangle lists by their indices alone, for what works on connectivity: each function makes about as many
// triangles as asked, all wound the same way. No list names a vertex above 65535.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <utility>
#include <vector>

using eIndexMesh = std::vector<std::uint16_t>;

inline void AddTriangle(eIndexMesh& mesh, std::size_t a, std::size_t b, std::size_t c) {
    for (const std::size_t v : {a, b, c}) {
        mesh.push_back(static_cast<std::uint16_t>(v));
    }
}

inline std::size_t SquareSide(std::size_t triangles) {
    return std::max<std::size_t>(3,
                                 static_cast<std::size_t>(std::sqrt(static_cast<double>(triangles) / 2.0)));
}

// Two triangles per cell of a square, row by row. `corner(x, y)` numbers the corners.
template <class Corner>
eIndexMesh Cells(std::size_t side, Corner&& corner) {
    eIndexMesh mesh;
    for (std::size_t y = 0; y < side; ++y) {
        for (std::size_t x = 0; x < side; ++x) {
            AddTriangle(mesh, corner(x, y), corner(x + 1, y), corner(x, y + 1));
            AddTriangle(mesh, corner(x + 1, y), corner(x + 1, y + 1), corner(x, y + 1));
        }
    }
    return mesh;
}

inline eIndexMesh Grid(std::size_t triangles) {
    const std::size_t side = SquareSide(triangles);
    return Cells(side, [side](std::size_t x, std::size_t y) { return y * (side + 1) + x; });
}

// A grid closed in both directions.
inline eIndexMesh Torus(std::size_t triangles) {
    const std::size_t side = SquareSide(triangles);
    return Cells(side, [side](std::size_t x, std::size_t y) { return y % side * side + x % side; });
}

// Meridians and parallels, closed at two poles.
inline eIndexMesh Sphere(std::size_t triangles) {
    const std::size_t side = SquareSide(triangles);
    const auto corner = [side](std::size_t x, std::size_t y) {
        return y == 0 ? 0 : y == side ? 1 : 2 + (y - 1) * side + x % side;
    };
    eIndexMesh mesh;
    for (std::size_t y = 0; y < side; ++y) {
        for (std::size_t x = 0; x < side; ++x) {
            if (y > 0) {
                AddTriangle(mesh, corner(x, y), corner(x + 1, y), corner(x, y + 1));
            }
            if (y + 1 < side) {
                AddTriangle(mesh, corner(x + 1, y), corner(x + 1, y + 1), corner(x, y + 1));
            }
        }
    }
    return mesh;
}

// All around vertex 0, open.
inline eIndexMesh Fan(std::size_t triangles) {
    eIndexMesh mesh;
    for (std::size_t i = 1; i <= triangles; ++i) {
        AddTriangle(mesh, 0, i, i + 1);
    }
    return mesh;
}

// Two closed fans, tip to tip.
inline eIndexMesh Bipyramid(std::size_t triangles) {
    const std::size_t around = std::max<std::size_t>(3, triangles / 2);
    eIndexMesh mesh;
    for (std::size_t i = 0; i < around; ++i) {
        const std::size_t next = (i + 1) % around;
        AddTriangle(mesh, 0, 2 + i, 2 + next);
        AddTriangle(mesh, 1, 2 + next, 2 + i);
    }
    return mesh;
}

// Triangles that share no edge. Each has vertices of its own as long as there are enough vertices; from then
// on the second and third vertex come from farther and farther apart, so that no two triangles share two.
inline eIndexMesh SeparateTriangles(std::size_t triangles) {
    constexpr std::size_t columns = 21845;  // three times that many vertices
    eIndexMesh mesh;
    for (std::size_t i = 0; i < triangles; ++i) {
        const std::size_t turn = i / columns;
        const std::size_t column = i % columns;
        AddTriangle(mesh, column, columns + (column + turn) % columns,
                    2 * columns + (column + 3 * turn) % columns);
    }
    return mesh;
}

// Triangles that share vertex 0 and nothing else.
inline eIndexMesh Pinwheel(std::size_t triangles) {
    eIndexMesh mesh;
    for (std::size_t i = 0; i < triangles; ++i) {
        AddTriangle(mesh, 0, 2 * i + 1, 2 * i + 2);
    }
    return mesh;
}

// Any three of the first `vertices` vertices: edges with many faces, repetitions, degenerate triangles.
inline eIndexMesh RandomTriangles(std::size_t triangles, std::size_t vertices, unsigned seed) {
    std::mt19937 random(seed);
    eIndexMesh mesh;
    for (std::size_t i = 0; i < 3 * triangles; ++i) {
        mesh.push_back(static_cast<std::uint16_t>(random() % vertices));
    }
    return mesh;
}

// The triangles in random order, each beginning with any of its corners.
inline eIndexMesh Shuffled(eIndexMesh mesh, unsigned seed) {
    std::mt19937 random(seed);
    for (std::size_t i = mesh.size() / 3; i > 1; --i) {
        const auto last = mesh.begin() + static_cast<std::ptrdiff_t>(3 * (i - 1));
        std::swap_ranges(last, last + 3, mesh.begin() + static_cast<std::ptrdiff_t>(3 * (random() % i)));
        std::rotate(last, last + static_cast<std::ptrdiff_t>(random() % 3), last + 3);
    }
    return mesh;
}
