#include "volume/write_volume.h"

#include <string>

#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/bones/bone_tree.h"
#include "scene/master_scale.h"
#include "scene/properties/node_name.h"
#include "scene/run_journal.h"
#include "scene/skeleton/matrix_text.h"
#include "scene/triangle_mesh.h"
#include "volume/convexity.h"
#include "volume/obstacle_tags.h"
#include "volume/polyhedron_image.h"

namespace {

using host::Matrix3;
using host::Point3;

// The first word of an object's class id tells its shape.
enum eVolumeShape : std::uint32_t { kBox = 0x10, kSphere = 0x11, kCylinder = 0x12 };

struct eVolumeSource {
    host::INode& node;
    std::string name;  // cleaned, without suffix
    std::uint32_t shape;
    float metresPerUnit;
    Matrix3 nodeTM;        // of the node
    Matrix3 nodeToParent;  // without scale
    Matrix3 objectToNode;  // with the node's scale and the object's offset
};

eVolumeSource ReadSource(Export& run, host::INode& node) {
    const host::TimeValue t = run.StaticTime();
    const host::Object* object = node.EvalWorldState(t).obj;
    const Matrix3 nodeTM = node.GetNodeTM(t);
    const Matrix3 parentTM = ParentBone(node)->GetNodeTM(t);
    return {.node = node,
            .name = CleanNodeName(node.GetName(), true),
            .shape = object != nullptr ? object->ClassID().a : 0,
            .metresPerUnit = MasterScale(run),
            .nodeTM = nodeTM,
            .nodeToParent = NoScale(nodeTM) * Inverse(NoScale(parentTM)),
            .objectToNode = node.GetObjTMAfterWSM(t) * Inverse(NoScale(nodeTM))};
}

// A polyhedron that its indices can't address is refused before anything of it is written.
bool IsWritable(Export& run, const eVolumeSource& source, const eTriangleMesh& triangles) {
    if (!triangles.IsValid()) {
        NoteLeftOut(run, source.node, eLeftOut::NoTriangles);
        Tell(run, eMessageId::VolumesNoMesh, {.node = host::PathOf(source.node)}, source.name);
        return false;
    }
    const bool isPrimitive = source.shape == kBox || source.shape == kSphere || source.shape == kCylinder;
    if (!isPrimitive && triangles.Mesh().verts.size() > kMaxPolyhedronVertices) {
        NoteLeftOut(run, source.node, eLeftOut::TooLarge);
        Tell(run, eMessageId::VolumesTooManyVertices, {.node = host::PathOf(source.node)}, source.name);
        return false;
    }
    return true;
}

void WritePolyhedron(Export& run, const eVolumeSource& source, const host::Mesh& mesh) {
    const auto image = MakePolyhedronImage(mesh, source.objectToNode, source.metresPerUnit);
    run.texts->mdlWriter->BlockBegin().Word("polyhedron").String(HexText(image)).BlockEndLine();
    if (mesh.faces.empty()) {
        TellOfNode(run, eMessageId::VolumesNoPolygons, source.node);
    } else if (!IsConvex(mesh)) {
        TellOfNode(run, eMessageId::VolumesNotConvex, source.node);
    }
}

// Writes the shape and gives the volume's matrix. The sizes of a primitive are those of the object's own
// bounds: a scale on the node shows in the matrix.
Matrix3 WriteShape(Export& run, const eVolumeSource& source, const host::Mesh& mesh) {
    host::Box3 bounds = host::BoundsOf(mesh);
    if (bounds.IsEmpty()) {
        bounds = {{0, 0, 0}, {0, 0, 0}};
    }
    const Point3 lower = bounds.pmin * source.metresPerUnit;
    const Point3 size = bounds.pmax * source.metresPerUnit - lower;
    const Matrix3 toMiddle = host::TransMatrix({0, 0, (0.5F * size.z + lower.z) / source.metresPerUnit});
    const Matrix3 objectToParent = source.objectToNode * source.nodeToParent;
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    switch (source.shape) {
        case kBox:
            writer.BlockBegin().Word("box").Real(size.x).Real(size.y).Real(size.z).BlockEndLine();
            return toMiddle * objectToParent;
        case kSphere:
            writer.BlockBegin().Word("sphere").Real(0.5F * size.x).BlockEndLine();
            return objectToParent;
        case kCylinder:
            writer.BlockBegin().Word("cylinder").Real(0.5F * size.x).Real(size.z).BlockEndLine();
            return toMiddle * objectToParent;
        default:
            WritePolyhedron(run, source, mesh);
            return source.nodeToParent;
    }
}

void CheckMatrix(const eVolumeSource& source, const Matrix3& volumeTM) {
    if (!IsOrthonormal(volumeTM)) {
        Tell(nullptr, eMessageId::VolumesMatrix, {.node = host::PathOf(source.node)}, source.name);
    }
    if (source.nodeTM.Parity() != 0) {
        Tell(nullptr, eMessageId::VolumesMirrored, {.node = host::PathOf(source.node)}, source.name);
    }
}

}  // namespace

void WriteVolume(Export& run, host::INode& node) {
    const eVolumeSource source = ReadSource(run, node);
    run.texts->defWriter->BlockBegin().String(source.name).EndLine();
    run.texts->mdlWriter->BlockBegin().String(source.name).EndLine();
    const eTriangleMesh triangles(node, run.StaticTime());
    if (IsWritable(run, source, triangles)) {
        const Matrix3 volumeTM = WriteShape(run, source, triangles.Mesh());
        WriteObstacleTags(run, node, true);
        const std::string bone = CleanNodeName(ParentBone(node)->GetName(), true);
        run.texts->mdlWriter->BlockBegin().Word("bone").String(bone).BlockEndLine();
        CheckMatrix(source, volumeTM);
        WriteMatrix(run, volumeTM);
    }
    run.texts->defWriter->BlockEndLine();
    run.texts->mdlWriter->BlockEndLine();
}
