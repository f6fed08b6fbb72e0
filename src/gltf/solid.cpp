#include "gltf/solid.h"

#include <cmath>
#include <numbers>

namespace gltf {

namespace {

constexpr std::uint16_t kAround = 24;  // sides of what is round
constexpr std::uint16_t kRings = 12;   // from pole to pole

float AngleOf(int step, int steps) {
    return static_cast<float>(2 * std::numbers::pi * step / steps);
}

void AddQuad(eSolid& solid, int a, int b, int c, int d) {
    for (const int index : {a, b, c, a, c, d}) {
        solid.indices.push_back(static_cast<std::uint16_t>(index));
    }
}

}  // namespace

eSolid MakeBox(const host::Point3& size) {
    eSolid box;
    for (int corner = 0; corner < 8; ++corner) {
        box.vertices.push_back({size.x * ((corner & 1) != 0 ? 0.5F : -0.5F),
                                size.y * ((corner & 2) != 0 ? 0.5F : -0.5F),
                                size.z * ((corner & 4) != 0 ? 0.5F : -0.5F)});
    }
    AddQuad(box, 0, 2, 3, 1);
    AddQuad(box, 4, 5, 7, 6);
    AddQuad(box, 0, 1, 5, 4);
    AddQuad(box, 2, 6, 7, 3);
    AddQuad(box, 0, 4, 6, 2);
    AddQuad(box, 1, 3, 7, 5);
    return box;
}

eSolid MakeSphere(float radius) {
    eSolid sphere;
    for (int ring = 0; ring <= kRings; ++ring) {
        const float polar = AngleOf(ring, 2 * kRings);
        for (int step = 0; step < kAround; ++step) {
            const float angle = AngleOf(step, kAround);
            sphere.vertices.push_back({radius * std::sin(polar) * std::cos(angle),
                                       radius * std::sin(polar) * std::sin(angle),
                                       -radius * std::cos(polar)});
        }
    }
    for (int ring = 0; ring < kRings; ++ring) {
        for (int step = 0; step < kAround; ++step) {
            const int next = (step + 1) % kAround;
            const int row = ring * kAround;
            AddQuad(sphere, row + step, row + next, row + kAround + next, row + kAround + step);
        }
    }
    return sphere;
}

eSolid MakeCylinder(float radius, float height) {
    eSolid cylinder;
    for (int step = 0; step < kAround; ++step) {
        const float x = radius * std::cos(AngleOf(step, kAround));
        const float y = radius * std::sin(AngleOf(step, kAround));
        cylinder.vertices.push_back({x, y, -height / 2});
        cylinder.vertices.push_back({x, y, height / 2});
    }
    cylinder.vertices.push_back({0, 0, -height / 2});
    cylinder.vertices.push_back({0, 0, height / 2});
    for (int step = 0; step < kAround; ++step) {
        const int own = 2 * step;
        const int next = 2 * ((step + 1) % kAround);
        AddQuad(cylinder, own, next, next + 1, own + 1);
        for (const int index : {2 * kAround, next, own, 2 * kAround + 1, own + 1, next + 1}) {
            cylinder.indices.push_back(static_cast<std::uint16_t>(index));
        }
    }
    return cylinder;
}

eSolid MakeWall(const std::vector<host::Point2>& line, float height) {
    eSolid wall;
    for (const host::Point2& point : line) {
        wall.vertices.push_back({point.x, point.y, 0});
        wall.vertices.push_back({point.x, point.y, height});
    }
    const auto count = static_cast<int>(wall.vertices.size());
    for (int own = 0; own < count; own += 2) {
        const int next = (own + 2) % count;
        AddQuad(wall, own, next, next + 1, own + 1);
    }
    return wall;
}

std::vector<host::Point2> CircleLine(const host::Point2& center, float radius) {
    constexpr int kSides = 2 * kAround;
    std::vector<host::Point2> line;
    line.reserve(kSides);
    for (int step = 0; step < kSides; ++step) {
        line.push_back({center.x + radius * std::cos(AngleOf(step, kSides)),
                        center.y + radius * std::sin(AngleOf(step, kSides))});
    }
    return line;
}

}  // namespace gltf
