#include "standalone/objects/tessellation.h"

#include <cmath>
#include <numbers>

namespace standalone {

namespace {

// Adds faces and their map faces together, so that neither can be forgotten.
class eMeshMaker {
public:
    eMeshMaker() { mesh.maps.push_back({1, {}, {}}); }

    std::uint32_t Vertex(const host::Point3& p) {
        mesh.verts.push_back(p);
        return static_cast<std::uint32_t>(mesh.verts.size() - 1);
    }
    std::uint32_t MapVertex(float u, float v) {
        mesh.maps.front().verts.push_back({u, v, 0});
        return static_cast<std::uint32_t>(mesh.maps.front().verts.size() - 1);
    }
    void SetSide(std::uint32_t smoothing, std::uint16_t materialId) {
        side.smGroup = smoothing;
        side.setMatID(materialId);
    }

    struct eCorner {
        std::uint32_t vertex;
        std::uint32_t mapVertex;
    };

    // Corners run counter-clockwise as seen from outside.
    void Triangle(const eCorner& a, const eCorner& b, const eCorner& c) {
        host::Face face = side;
        face.v[0] = a.vertex;
        face.v[1] = b.vertex;
        face.v[2] = c.vertex;
        mesh.faces.push_back(face);
        mesh.maps.front().faces.push_back({{a.mapVertex, b.mapVertex, c.mapVertex}});
    }
    void Quad(const eCorner& a, const eCorner& b, const eCorner& c, const eCorner& d) {
        Triangle(a, b, c);
        Triangle(c, d, a);
    }

    host::Mesh Take() { return std::move(mesh); }

private:
    host::Mesh mesh;
    host::Face side;  // smoothing group and material id of the faces to come
};

}  // namespace

host::Point2 CirclePoint(int index, int count) {
    const double angle = 2 * std::numbers::pi * index / count;
    // Rounding leaves a tiny rest where the circle meets an axis.
    const auto snap = [](double value) {
        return std::fabs(value) < 1e-12 ? 0.0F : static_cast<float>(value);
    };
    return {snap(std::cos(angle)), snap(std::sin(angle))};
}

host::Mesh BoxMesh(const eBoxObject& box) {
    eMeshMaker maker;
    const float x = box.width / 2, y = box.length / 2, z = box.height;
    for (const float height : {0.0F, z}) {
        maker.Vertex({-x, -y, height});
        maker.Vertex({x, -y, height});
        maker.Vertex({x, y, height});
        maker.Vertex({-x, y, height});
    }
    const std::uint32_t square[4] = {maker.MapVertex(0, 0), maker.MapVertex(1, 0), maker.MapVertex(1, 1),
                                     maker.MapVertex(0, 1)};
    constexpr std::uint32_t kSides[6][4] = {{3, 2, 1, 0}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                            {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
    for (std::uint16_t i = 0; i < 6; ++i) {
        const auto& corner = kSides[i];
        maker.SetSide(1U << i, i);
        maker.Quad({corner[0], square[0]}, {corner[1], square[1]}, {corner[2], square[2]},
                   {corner[3], square[3]});
    }
    return maker.Take();
}

namespace {

// A ring of vertices with map vertices; the seam has one map vertex more.
struct eRing {
    std::uint32_t firstVertex = 0;
    std::uint32_t firstMapVertex = 0;
};

eRing AddRing(eMeshMaker& maker, int count, float radius, float z, float v) {
    eRing ring;
    for (int i = 0; i <= count; ++i) {
        const std::uint32_t mapVertex = maker.MapVertex(static_cast<float>(i) / static_cast<float>(count), v);
        ring.firstMapVertex = i == 0 ? mapVertex : ring.firstMapVertex;
    }
    for (int i = 0; i < count; ++i) {
        const host::Point2 direction = CirclePoint(i, count);
        const std::uint32_t vertex = maker.Vertex({direction.x * radius, direction.y * radius, z});
        ring.firstVertex = i == 0 ? vertex : ring.firstVertex;
    }
    return ring;
}

eMeshMaker::eCorner RingCorner(const eRing& ring, int index, int count) {
    return {ring.firstVertex + static_cast<std::uint32_t>(index % count),
            ring.firstMapVertex + static_cast<std::uint32_t>(index)};
}

void JoinRings(eMeshMaker& maker, const eRing& lower, const eRing& upper, int count) {
    for (int i = 0; i < count; ++i) {
        maker.Quad(RingCorner(lower, i, count), RingCorner(lower, i + 1, count),
                   RingCorner(upper, i + 1, count), RingCorner(upper, i, count));
    }
}

// A fan between a ring and a pole above or below it.
void CloseSphere(eMeshMaker& maker, const eRing& ring, int count, float z, float v, bool above) {
    const std::uint32_t pole = maker.Vertex({0, 0, z});
    for (int i = 0; i < count; ++i) {
        const float u = (static_cast<float>(i) + 0.5F) / static_cast<float>(count);
        const eMeshMaker::eCorner tip{pole, maker.MapVertex(u, v)};
        const eMeshMaker::eCorner here = RingCorner(ring, i, count), next = RingCorner(ring, i + 1, count);
        above ? maker.Triangle(here, next, tip) : maker.Triangle(next, here, tip);
    }
}

// A flat fan over a ring; the map shows the disc in the unit square.
void CloseCylinder(eMeshMaker& maker, const eRing& ring, int count, float z, bool above) {
    const eMeshMaker::eCorner middle{maker.Vertex({0, 0, z}), maker.MapVertex(0.5F, 0.5F)};
    std::uint32_t firstMapVertex = 0;
    for (int i = 0; i < count; ++i) {
        const host::Point2 direction = CirclePoint(i, count);
        const std::uint32_t mapVertex =
            maker.MapVertex((direction.x + 1) / 2, ((above ? direction.y : -direction.y) + 1) / 2);
        firstMapVertex = i == 0 ? mapVertex : firstMapVertex;
    }
    for (int i = 0; i < count; ++i) {
        const auto corner = [&](int index) {
            const auto wrapped = static_cast<std::uint32_t>(index % count);
            return eMeshMaker::eCorner{ring.firstVertex + wrapped, firstMapVertex + wrapped};
        };
        above ? maker.Triangle(corner(i), corner(i + 1), middle)
              : maker.Triangle(corner(i + 1), corner(i), middle);
    }
}

}  // namespace

host::Mesh SphereMesh(const eSphereObject& sphere) {
    eMeshMaker maker;
    maker.SetSide(1, 0);
    const int count = sphere.segments;
    const int steps = count / 2;  // from pole to pole
    std::vector<eRing> rings;
    for (int step = 1; step < steps; ++step) {
        // The circle through the poles, from the lower one up.
        const host::Point2 profile = CirclePoint(step, count);
        rings.push_back(AddRing(maker, count, profile.y * sphere.radius, -profile.x * sphere.radius,
                                static_cast<float>(step) / static_cast<float>(steps)));
    }
    CloseSphere(maker, rings.front(), count, -sphere.radius, 0, false);
    for (std::size_t i = 1; i < rings.size(); ++i) {
        JoinRings(maker, rings[i - 1], rings[i], count);
    }
    CloseSphere(maker, rings.back(), count, sphere.radius, 1, true);
    return maker.Take();
}

host::Mesh CylinderMesh(const eCylinderObject& cylinder) {
    eMeshMaker maker;
    maker.SetSide(1, 0);
    const eRing base = AddRing(maker, cylinder.sides, cylinder.radius, 0, 0);
    const eRing top = AddRing(maker, cylinder.sides, cylinder.radius, cylinder.height, 1);
    JoinRings(maker, base, top, cylinder.sides);
    maker.SetSide(2, 0);
    CloseCylinder(maker, base, cylinder.sides, 0, false);
    maker.SetSide(4, 0);
    CloseCylinder(maker, top, cylinder.sides, cylinder.height, true);
    return maker.Take();
}

}  // namespace standalone
