#include "mesh/strips/strip_components.h"

#include <algorithm>
#include <numeric>

namespace {

// Instead of a component: the face has none yet, or is taken.
constexpr std::uint32_t unknown = ~std::uint32_t{0};
constexpr std::uint32_t gone = unknown - 1;

}  // namespace

eStripComponents::eStripComponents(const eStripAdjacency& someAdjacency)
    : adjacency(someAdjacency),
      faces(someAdjacency.faces.size()),
      componentOf(faces.size()),
      left(faces.size()) {
    std::iota(faces.begin(), faces.end(), 0u);
    found.reserve(faces.size());
    FindComponents();
    LowerLargest();
}

void eStripComponents::Take(std::span<const std::uint32_t> taken) {
    for (std::size_t first = 0, next = 0; first < taken.size(); first = next) {
        const std::uint32_t component = componentOf[taken[first]];
        for (; next < taken.size() && componentOf[taken[next]] == component; ++next) {
            componentOf[taken[next]] = gone;
        }
        Lessen(Whole(component), static_cast<std::uint32_t>(next - first));
    }
    left -= taken.size();
    if (2 * left < faces.size()) {
        FindComponents();
    }
    LowerLargest();
}

void eStripComponents::Lessen(std::uint32_t whole, std::uint32_t faceCount) {
    std::uint32_t& size = components[whole].size;
    --countOfSize[size];
    size -= faceCount;
    ++countOfSize[size];
}

void eStripComponents::LowerLargest() {
    while (largest > 0 && countOfSize[largest] == 0) {
        --largest;
    }
}

void eStripComponents::FindComponents() {
    std::erase_if(faces, [this](std::uint32_t face) { return componentOf[face] == gone; });
    for (const std::uint32_t face : faces) {
        componentOf[face] = unknown;
    }
    found.clear();
    components.clear();
    for (const std::uint32_t face : faces) {
        if (componentOf[face] == unknown) {
            Flood(face);
        }
    }
    faces.swap(found);
    countOfSize.assign(faces.size() + 1, 0);
    for (std::uint32_t component = 0; component < components.size(); ++component) {
        if (Whole(component) == component) {
            ++countOfSize[components[component].size];
        }
    }
    largest = static_cast<std::uint32_t>(faces.size());
}

// Makes a component of all that is reached from the face. Where it reaches an earlier one, that one was not
// left over this edge: a third face on an edge sees the first one, and is not seen by it.
void eStripComponents::Flood(std::uint32_t face) {
    const auto own = static_cast<std::uint32_t>(components.size());
    components.push_back({own, 0});
    const std::size_t first = found.size();
    const auto add = [&](std::uint32_t reached) {
        componentOf[reached] = own;
        found.push_back(reached);
    };
    add(face);
    for (std::size_t next = first; next < found.size(); ++next) {
        for (const eStripSide across : adjacency.faces[found[next]].across) {
            const std::uint32_t other = across < 0 ? gone : componentOf[FaceOf(across)];
            if (other == unknown) {
                add(FaceOf(across));
            } else if (other != gone && other != own) {
                Join(other, own);
            }
        }
    }
    components[own].size += static_cast<std::uint32_t>(found.size() - first);
}

void eStripComponents::Join(std::uint32_t joined, std::uint32_t into) {
    joined = Whole(joined);
    if (joined != into) {
        components[joined].partOf = into;
        components[into].size += components[joined].size;
    }
}

std::uint32_t eStripComponents::Whole(std::uint32_t component) {
    while (components[component].partOf != component) {
        components[component].partOf = components[components[component].partOf].partOf;
        component = components[component].partOf;
    }
    return component;
}
