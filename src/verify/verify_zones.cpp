#include "verify/verify_zones.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "base/number_text.h"
#include "io/clean_name.h"
#include "scene/triangle_mesh.h"
#include "verify/written_blocks.h"

namespace verify {

namespace {

using inspect::eSdlBlock;

// First words of the class ids of objects whose figure is no general one.
enum eZoneClass : std::uint32_t { kSphere = 0x11, kRectangle = 0x1065, kCircle = 0x1999 };

struct eRange {
    double low = 1e300;
    double high = -1e300;

    double Middle() const { return (low + high) / 2; }
    double Half() const { return (high - low) / 2; }
};

eRange RangeAlong(std::span<const eVector> points, const eVector& axis) {
    eRange range;
    for (const eVector& point : points) {
        const double at = Dot(point, axis);
        range.low = std::min(range.low, at);
        range.high = std::max(range.high, at);
    }
    return range;
}

// The other axis of a box in the plane.
eVector Beside(const eVector& axis) {
    return {axis[1], -axis[0], 0};
}

double AreaAlong(std::span<const eVector> points, const eVector& axis) {
    return 4 * RangeAlong(points, axis).Half() * RangeAlong(points, Beside(axis)).Half();
}

// Of the boxes in all directions; a degree more or less changes little.
double SmallestArea(std::span<const eVector> points) {
    double smallest = 1e300;
    for (int degrees = 0; degrees < 90; ++degrees) {
        const double angle = degrees * std::numbers::pi / 180;
        smallest = std::min(smallest, AreaAlong(points, {std::cos(angle), std::sin(angle), 0}));
    }
    return smallest;
}

eVector InPlane(const std::vector<double>& numbers) {
    return numbers.size() == 2 ? eVector{numbers[0], numbers[1], 0} : eVector{1e30, 1e30, 0};
}

class eZoneComparison {
public:
    eZoneComparison(const eVerifiedScene& scene, const eSceneModel& model, host::INode& node,
                    const eTolerances& tolerances, eFindings& findings)
        : scene_(scene),
          node_(node),
          name_(CleanNodeName(node.GetName(), true)),
          root_(model.root->GetNodeTM(scene.StaticTime())),
          bounds_(tolerances),
          findings_(findings) {}

    void Compare(const eSdlBlock& written) {
        const char* const kind = host::HasUserPropString(node_, "Obstacle") ? "obstacle" : "area";
        if (written.Name() != kind) {
            findings_.Add("zone kind", 0, name_ + " is no " + kind);
        }
        const host::Object* const object = node_.EvalWorldState(scene_.StaticTime()).obj;
        if (object == nullptr) {
            return;
        }
        if (object->SuperClassID() == host::kGeometrySuperClass) {
            CompareMesh(written, object->ClassID().a);
        } else if (object->SuperClassID() == host::kShapeSuperClass) {
            CompareShape(written, *object);
        }
    }

private:
    void CompareMesh(const eSdlBlock& written, std::uint32_t objectClass) {
        const eTriangleMesh triangles(node_, scene_.StaticTime());
        if (!triangles.IsValid()) {
            return;
        }
        if (objectClass == kSphere) {
            const host::Point3 size = host::BoundsOf(triangles.Mesh()).Width();
            return CompareCircle(written, size.x / 2 * Scales()[0]);
        }
        if (const eSdlBlock* box = Figure(written, "obb2")) {
            CompareBoxAround(*box, triangles.Mesh().verts);
        }
    }

    void CompareShape(const eSdlBlock& written, const host::Object& object) {
        constexpr int kOwnSteps = -2;
        const host::PolyShape shape = object.MakePolyShape(scene_.StaticTime(), kOwnSteps, false);
        host::Box3 bounds;
        for (const host::PolyLine& line : shape.lines) {
            for (const host::Point3& point : line.points) {
                bounds += point;
            }
        }
        if (bounds.IsEmpty()) {
            return;
        }
        const eVector scales = Scales();
        if (object.ClassID().a == kCircle) {
            CompareCircle(written, bounds.Width().x / 2 * scales[0]);
        } else if (object.ClassID().a == kRectangle) {
            CompareRectangle(written, bounds, scales);
        } else if (shape.lines.size() == 1 && shape.lines.front().points.size() >= 3) {
            ComparePolygon(written, shape.lines.front().points, scales);
        }
    }

    // Null, and told, if the zone has another figure.
    const eSdlBlock* Figure(const eSdlBlock& written, const char* figure) {
        const eSdlBlock* const block = written.Find(figure);
        if (block == nullptr) {
            findings_.Add("zone figure", 0, name_ + " is no " + figure);
        }
        return block;
    }

    // The scale of the node and its object, in metres a unit, along the axes of the object.
    eVector Scales() const {
        const host::DMatrix3 toRoot =
            Product(Exact(node_.GetObjTMAfterWSM(scene_.StaticTime())), host::ExactInverse(NoScale(root_)));
        eVector scales{};
        for (std::size_t i = 0; i < 3; ++i) {
            scales[i] = Length(toRoot.rows[i]) * scene_.MetresPerUnit();
        }
        return scales;
    }

    // From a place in the node, in metres and without its scale, into the plane of the model.
    eVector InModel(const eVector& metres) const {
        host::DMatrix3 place =
            Product(Exact(NoScale(node_.GetNodeTM(scene_.StaticTime()))), host::ExactInverse(NoScale(root_)));
        for (double& coordinate : place.rows[3]) {
            coordinate *= scene_.MetresPerUnit();
        }
        const eVector placed = Through(metres, place);
        return {placed[0], -placed[1], 0};
    }

    void CompareCircle(const eSdlBlock& written, double radius) {
        if (const eSdlBlock* circle = Figure(written, "circle2")) {
            const std::vector<double> found = NumbersIn(*circle, "radius");
            Tell("zone size", found.size() == 1 ? std::fabs(found[0] - radius) : 1e30, radius);
            TellPoint(InModel({0, 0, 0}), InPlane(NumbersIn(*circle, "center")));
        }
    }

    void CompareRectangle(const eSdlBlock& written, const host::Box3& bounds, const eVector& scales) {
        const eSdlBlock* const box = Figure(written, "obb2");
        if (box == nullptr) {
            return;
        }
        // The host's shape and the node's scale have one y, the plane the other.
        const double middle = -(double{bounds.pmin.y} + bounds.pmax.y) / 2 * scales[1];
        const eVector low = InModel({bounds.pmin.x * scales[0], middle, 0});
        const eVector high = InModel({bounds.pmax.x * scales[0], middle, 0});
        TellPoint({(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, 0}, InPlane(NumbersIn(*box, "center")));
        TellSize({bounds.Width().x / 2 * scales[0], bounds.Width().y / 2 * scales[1], 0}, *box);
        TellAxis(AngleBetween(low - high, InPlane(NumbersIn(*box, "axis"))));
    }

    void ComparePolygon(const eSdlBlock& written, std::vector<host::Point3> points, const eVector& scales) {
        const eSdlBlock* const polygon = Figure(written, "polygon2");
        if (polygon == nullptr) {
            return;
        }
        const std::vector<const eSdlBlock*> found = polygon->Blocks("vertex");
        if (found.size() != points.size()) {
            return findings_.Add("zone figure", 0,
                                 name_ + " has " + std::to_string(found.size()) + " corners");
        }
        const host::Point3 a = points[1] - points[0];
        const host::Point3 b = points[2] - points[0];
        if (a.y * b.x - b.y * a.x < 0) {
            std::ranges::reverse(points);
        }
        for (std::size_t i = 0; i < points.size(); ++i) {
            std::vector<double> numbers;
            for (const std::string& word : found[i]->Values()) {
                numbers.push_back(ReadReal(word));
            }
            TellPoint(InModel({points[i].x * scales[0], points[i].y * scales[1], points[i].z}),
                      InPlane(numbers));
        }
    }

    void CompareBoxAround(const eSdlBlock& box, const std::vector<host::Point3>& vertices) {
        const std::vector<eVector> points = PlanePoints(vertices);
        const eVector axis = InPlane(NumbersIn(box, "axis"));
        const eVector center = InPlane(NumbersIn(box, "center"));
        const eRange along = RangeAlong(points, axis);
        const eRange beside = RangeAlong(points, Beside(axis));
        const double offset = std::max(std::fabs(Dot(center, axis) - along.Middle()),
                                       std::fabs(Dot(center, Beside(axis)) - beside.Middle()));
        Tell("zone position", offset, Length(center));
        TellSize({along.Half(), beside.Half(), 0}, box);
        constexpr double kLittle = 0.01;
        const double area = AreaAlong(points, axis);
        if (std::fabs(Length(axis) - 1) > kLittle ||
            area > SmallestArea(points) * (1 + kLittle) + kLittle * kLittle) {
            findings_.Add("zone axis", 0, name_ + " is not the smallest box");
        }
    }

    // The vertices in the plane of the model, whose own scale they keep.
    std::vector<eVector> PlanePoints(const std::vector<host::Point3>& vertices) const {
        const host::DMatrix3 toRoot =
            Product(Exact(node_.GetObjTMAfterWSM(scene_.StaticTime())), host::ExactInverse(root_));
        std::vector<eVector> points;
        for (const host::Point3& vertex : vertices) {
            const eVector p = Through(Exact(vertex), toRoot);
            const double metres = scene_.MetresPerUnit();
            points.push_back({p[0] * host::Length(root_.GetRow(0)) * metres,
                              -p[1] * host::Length(root_.GetRow(1)) * metres, 0});
        }
        return points;
    }

    void TellPoint(const eVector& wanted, const eVector& found) {
        Tell("zone position", LargestDifference(wanted, found), Length(wanted));
    }
    void TellSize(const eVector& wanted, const eSdlBlock& box) {
        Tell("zone size", LargestDifference(wanted, InPlane(NumbersIn(box, "extent"))), Length(wanted));
    }
    void TellAxis(double degrees) {
        if (degrees > bounds_.degrees) {
            findings_.Add("zone axis", degrees, name_);
        }
    }
    void Tell(const char* kind, double difference, double of) {
        if (difference > bounds_.metres + TextSlack(of)) {
            findings_.Add(kind, difference, name_);
        }
    }

    const eVerifiedScene& scene_;
    host::INode& node_;
    std::string name_;
    host::Matrix3 root_;
    eTolerances bounds_;
    eFindings& findings_;
};

}  // namespace

bool IsSwitchedOff(const host::INode& node) {
    std::string obstacle;
    return node.GetUserPropString("Obstacle", obstacle) && !obstacle.empty() && ReadInteger(obstacle) == 0;
}

void CompareZones(const eVerifiedScene& scene, const eSceneModel& model,
                  const std::vector<host::INode*>& nodes, const eWrittenModel& written,
                  const eTolerances& tolerances, eFindings& findings) {
    eWrittenBlocks blocks(written.text.Find("zones"));
    for (host::INode* node : nodes) {
        const eSdlBlock* const block =
            IsSwitchedOff(*node) ? nullptr
                                 : blocks.Take(CleanNodeName(node->GetName(), true), "zone", findings);
        if (block != nullptr) {
            eZoneComparison(scene, model, *node, tolerances, findings).Compare(*block);
        }
    }
    blocks.TellRest("zone", findings);
}

}  // namespace verify
