#include "volume/write_zone.h"

#include <algorithm>
#include <vector>

#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/current_model.h"
#include "scene/master_scale.h"
#include "scene/triangle_mesh.h"
#include "volume/fitted_box.h"

namespace {

using host::Matrix3;
using host::Point3;
using xIo::xSdl::eWriter;

// First words of the class ids whose figure is no general one.
enum eZoneClass : std::uint32_t { kSphere = 0x11, kRectangle = 0x1065, kCircle = 0x1999 };

Matrix3 ScaleOf(const Matrix3& m) {
    return host::ScaleMatrix(
        {host::Length(m.GetRow(0)), host::Length(m.GetRow(1)), host::Length(m.GetRow(2))});
}

struct eZoneSource {
    host::INode& node;
    host::Object& object;
    host::TimeValue time;
    float metresPerUnit;
    Matrix3 meshToModel;  // scene units
    Matrix3 place;        // of the node in the model, metres, without scale
    Point3 scale;         // of the node; y is negated by the mirror
};

eZoneSource ReadSource(Export& run, host::INode& node, host::Object& object) {
    const host::TimeValue t = run.StaticTime();
    const auto metresPerUnit = MasterScale(run);
    const Matrix3 nodeTM = node.GetNodeTM(t);
    const Matrix3 rootTM = run.model->currentRoot->GetNodeTM(t);
    const Matrix3 offset = host::ScaleMatrix(node.GetObjOffsetScale()) *
                           host::MatrixFromQuat(node.GetObjOffsetRot()) *
                           host::TransMatrix(node.GetObjOffsetPos());
    Matrix3 place = NoScale(nodeTM) * Inverse(NoScale(rootTM)) * run.mirrorMatrix;
    place.SetTrans(place.GetTrans() * metresPerUnit);
    const Matrix3 scale = ScaleOf(offset * nodeTM * Inverse(NoScale(rootTM))) * run.mirrorMatrix;
    return {.node = node,
            .object = object,
            .time = t,
            .metresPerUnit = metresPerUnit,
            .meshToModel = offset * nodeTM * Inverse(rootTM) * ScaleOf(rootTM) * run.mirrorMatrix,
            .place = place,
            .scale = {scale.GetRow(0).x, scale.GetRow(1).y, scale.GetRow(2).z}};
}

// The bounds in metres with the node's scale, each lower coordinate the smaller one.
host::Box3 ScaledBounds(const host::Box3& bounds, const eZoneSource& source) {
    host::Box3 scaled;
    for (const Point3& corner : {bounds.pmin, bounds.pmax}) {
        scaled += Point3{corner.x * source.metresPerUnit * source.scale.x,
                         corner.y * source.metresPerUnit * source.scale.y,
                         corner.z * source.metresPerUnit * source.scale.z};
    }
    return scaled;
}

void WritePair(eWriter& writer, const char* word, float x, float y) {
    writer.BlockBegin().Word(word).Real(x).Real(y).BlockEndLine();
}

void WriteRadius(eWriter& writer, const host::Box3& bounds) {
    writer.BlockBegin().Word("radius").Real(0.5F * bounds.Width().x).BlockEndLine();
}

void WriteSphere(eWriter& writer, const eZoneSource& source, const host::Mesh& mesh) {
    const Point3 center = source.place.GetTrans();
    writer.BlockBegin().Word("circle2");
    WriteRadius(writer, ScaledBounds(host::BoundsOf(mesh), source));
    WritePair(writer, "center", center.x, center.y);
}

void WriteMeshBox(eWriter& writer, const eZoneSource& source, const host::Mesh& mesh) {
    std::vector<host::Point2> points;
    points.reserve(mesh.verts.size());
    for (const Point3& vertex : mesh.verts) {
        const Point3 placed = vertex * source.meshToModel;
        points.push_back({placed.x, placed.y});
    }
    const eFittedBox box = FitBox(points);
    const float scale = source.metresPerUnit;
    writer.BlockBegin().Word("obb2").EndLine();
    WritePair(writer, "center", box.center.x * scale, box.center.y * scale);
    WritePair(writer, "extent", box.extent.x * scale, box.extent.y * scale);
    WritePair(writer, "axis", box.axis.x, box.axis.y);
}

void WriteMeshZone(eWriter& writer, const eZoneSource& source) {
    const std::uint32_t zoneClass = source.object.ClassID().a;
    const eTriangleMesh triangles(source.node, source.time);
    if (!triangles.IsValid()) {
        return;
    }
    if (zoneClass == kSphere) {
        WriteSphere(writer, source, triangles.Mesh());
    } else {
        WriteMeshBox(writer, source, triangles.Mesh());
    }
    writer.BlockEndLine();
    writer.BlockBegin().Word("rotate").BlockEndLine();
}

void WriteRectangle(eWriter& writer, const eZoneSource& source, const host::Box3& bounds) {
    const float middle = 0.5F * (bounds.pmin.y + bounds.pmax.y);
    const Point3 p1 = Point3{bounds.pmin.x, middle, 0} * source.place;
    const Point3 p2 = Point3{bounds.pmax.x, middle, 0} * source.place;
    const Point3 center = 0.5F * (p1 + p2);
    const Point3 axis = host::Normalize(p1 - p2);
    writer.BlockBegin().Word("obb2").EndLine();
    WritePair(writer, "center", center.x, center.y);
    WritePair(writer, "extent", 0.5F * bounds.Width().x, 0.5F * bounds.Width().y);
    WritePair(writer, "axis", axis.x, axis.y);
    writer.BlockEndLine();
}

void WriteCircle(eWriter& writer, const eZoneSource& source, const host::Box3& bounds) {
    const Point3 center = source.place.GetTrans();
    writer.BlockBegin().Word("circle2").EndLine();
    WriteRadius(writer, bounds);
    WritePair(writer, "center", center.x, center.y);
    writer.BlockEndLine();
}

// True if the first three points turn the other way round than the engine walks a polygon.
bool RunsBackward(const std::vector<Point3>& points) {
    const Point3 a = points[1] - points[0];
    const Point3 b = points[2] - points[0];
    return a.y * b.x - b.y * a.x < 0;
}

void WritePolygon(eWriter& writer, const eZoneSource& source, std::vector<Point3> points) {
    writer.BlockBegin().Word("polygon2").EndLine();
    writer.BlockBegin().Word("radius").Integer(0).BlockEndLine();
    if (RunsBackward(points)) {
        std::ranges::reverse(points);
    }
    for (const Point3& p : points) {
        const Point3 scaled{p.x * source.scale.x * source.metresPerUnit,
                            p.y * -source.scale.y * source.metresPerUnit, p.z};
        const Point3 placed = scaled * source.place;
        WritePair(writer, "vertex", placed.x, placed.y);
    }
    writer.BlockEndLine();
}

// The line of a polygon zone: a shape has to have exactly one, of three points or more, as the sense of
// turning is taken from its first three.
bool IsPolygon(Export& run, const eZoneSource& source, const host::PolyShape& shape) {
    if (shape.lines.size() > 1) {
        TellOfNode(run, eMessageId::ZonesSeveralPolygons, source.node);
        return false;
    }
    if (shape.lines.front().points.size() < 3) {
        TellOfNode(run, eMessageId::ZonesTooFewPoints, source.node);
        return false;
    }
    return true;
}

void WriteShapeZone(Export& run, const eZoneSource& source) {
    constexpr int kShapeSteps = -2;
    const host::PolyShape shape = source.object.MakePolyShape(source.time, kShapeSteps, false);
    if (shape.lines.empty()) {
        return;
    }
    host::Box3 lines;
    for (const host::PolyLine& line : shape.lines) {
        for (const Point3& p : line.points) {
            lines += p;
        }
    }
    const host::Box3 bounds =
        lines.IsEmpty() ? host::Box3{{0, 0, 0}, {0, 0, 0}} : ScaledBounds(lines, source);
    switch (source.object.ClassID().a) {
        case kRectangle:
            return WriteRectangle(*run.texts->mdlWriter, source, bounds);
        case kCircle:
            return WriteCircle(*run.texts->mdlWriter, source, bounds);
        default:
            if (IsPolygon(run, source, shape)) {
                WritePolygon(*run.texts->mdlWriter, source, shape.lines.front().points);
            }
    }
}

}  // namespace

void WriteZoneShape(Export& run, host::INode& node) {
    host::Object* object = node.EvalWorldState(run.StaticTime()).obj;
    if (object == nullptr) {
        return;
    }
    if (object->SuperClassID() == host::kGeometrySuperClass) {
        WriteMeshZone(*run.texts->mdlWriter, ReadSource(run, node, *object));
    } else if (object->SuperClassID() == host::kShapeSuperClass) {
        WriteShapeZone(run, ReadSource(run, node, *object));
    }
}
