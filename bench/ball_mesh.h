#pragma once

#include <cmath>
#include <numbers>

#include "host/mesh.h"
#include "index_meshes.h"

// A ball of radius 1 around the origin, of about as many triangles as asked: convex, its faces outward.
inline host::Mesh BallMesh(std::size_t triangles) {
    constexpr float kPi = std::numbers::pi_v<float>;
    const std::size_t side = SquareSide(triangles);
    host::Mesh mesh;
    mesh.verts = {{0, 0, 1}, {0, 0, -1}};
    for (std::size_t ring = 1; ring < side; ++ring) {
        for (std::size_t step = 0; step < side; ++step) {
            const float polar = kPi * static_cast<float>(ring) / static_cast<float>(side);
            const float around = 2 * kPi * static_cast<float>(step) / static_cast<float>(side);
            mesh.verts.push_back(
                {std::sin(polar) * std::cos(around), std::sin(polar) * std::sin(around), std::cos(polar)});
        }
    }
    const eIndexMesh corners = Sphere(triangles);
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        mesh.faces.push_back({{corners[i], corners[i + 2], corners[i + 1]}, 1, 0});
    }
    return mesh;
}
