#include "mesh/strips/strip_components.h"

#include <algorithm>
#include <numeric>
#include <utility>

eStripComponents::eStripComponents(const eStripAdjacency& someAdjacency)
    : adjacency(someAdjacency),
      faces(someAdjacency.faces.size()),
      isTaken(faces.size()),
      parent(faces.size()),
      sizes(faces.size()),
      left(faces.size()) {
    std::iota(faces.begin(), faces.end(), 0u);
    FindComponents();
    LowerLargest();
}

void eStripComponents::Take(std::span<const std::uint32_t> taken) {
    for (const std::uint32_t face : taken) {
        isTaken[face] = 1;
        std::uint32_t& size = sizes[Root(face)];
        --countOfSize[size];
        ++countOfSize[--size];
    }
    left -= taken.size();
    if (2 * left < faces.size()) {
        FindComponents();
    }
    LowerLargest();
}

void eStripComponents::LowerLargest() {
    while (largest > 0 && countOfSize[largest] == 0) {
        --largest;
    }
}

void eStripComponents::FindComponents() {
    std::erase_if(faces, [this](std::uint32_t face) { return isTaken[face] != 0; });
    for (const std::uint32_t face : faces) {
        parent[face] = face;
        sizes[face] = 1;
    }
    for (const std::uint32_t face : faces) {
        for (const eStripSide across : adjacency.faces[face].across) {
            if (across >= 0 && FaceOf(across) < face && isTaken[FaceOf(across)] == 0) {
                Join(face, FaceOf(across));
            }
        }
    }
    countOfSize.assign(faces.size() + 1, 0);
    for (const std::uint32_t face : faces) {
        if (parent[face] == face) {
            ++countOfSize[sizes[face]];
        }
    }
    largest = static_cast<std::uint32_t>(faces.size());
}

void eStripComponents::Join(std::uint32_t a, std::uint32_t b) {
    a = Root(a);
    b = Root(b);
    if (a == b) {
        return;
    }
    if (sizes[a] < sizes[b]) {
        std::swap(a, b);
    }
    parent[b] = a;
    sizes[a] += sizes[b];
}

std::uint32_t eStripComponents::Root(std::uint32_t face) {
    while (parent[face] != face) {
        parent[face] = parent[parent[face]];
        face = parent[face];
    }
    return face;
}
