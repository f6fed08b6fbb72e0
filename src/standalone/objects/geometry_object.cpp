#include "standalone/objects/geometry_object.h"

#include <type_traits>

#include "standalone/data/key_search.h"
#include "standalone/data/overloaded.h"
#include "standalone/objects/scene.h"
#include "standalone/objects/tessellation.h"

namespace standalone {

host::Object* eTriangleObject::ConvertToType(host::TimeValue t, const host::ClassId& id) {
    if (!CanConvertToType(id)) {
        return nullptr;
    }
    lastTime = t;
    return this;
}

host::Box3 eTriangleObject::GetDeformBBox(host::TimeValue t) const {
    const host::Box3 box = BoundsOf(Evaluate(t));
    return box.IsEmpty() ? Object::GetDeformBBox(t) : box;
}

eGeometryObject::eGeometryObject(eScene& ownScene, std::size_t place, eObjectKind& objectKind)
    : eTriangleObject(ownScene.hold, place), scene(ownScene), kind(objectKind) {
    if (const auto* mesh = std::get_if<eMeshObject>(&kind)) {
        for (const eVertexKey& key : mesh->vertexKeys) {
            keyFrames.push_back(key.frame);
        }
    }
}

host::ClassId eGeometryObject::ClassID() const {
    return std::visit(eOverloaded{[](const eBoxObject&) {
                                      return host::ClassId{0x10, 0};
                                  },
                                  [](const eSphereObject&) {
                                      return host::ClassId{0x11, 0};
                                  },
                                  [](const eCylinderObject&) {
                                      return host::ClassId{0x12, 0};
                                  },
                                  [](const auto&) {
                                      return host::ClassId{0xE44F10B3, 0};
                                  }},
                      kind);
}

host::Mesh& eGeometryObject::Evaluate(host::TimeValue t) const {
    scene.recentMeshes.Use(const_cast<eGeometryObject&>(*this));
    if (auto* mesh = std::get_if<eMeshObject>(&kind)) {
        return EvaluateMesh(*mesh, t);
    }
    if (!tessellation) {
        tessellation =
            std::visit(eOverloaded{[](const eBoxObject& box) { return BoxMesh(box); },
                                   [](const eSphereObject& sphere) { return SphereMesh(sphere); },
                                   [](const eCylinderObject& cylinder) { return CylinderMesh(cylinder); },
                                   [](const auto&) { return host::Mesh(); }},
                       kind);
    }
    return *tessellation;
}

// The vertices of a mesh with keys move in its own table: its first state is never asked for again.
host::Mesh& eGeometryObject::EvaluateMesh(eMeshObject& object, host::TimeValue t) const {
    const double frame = scene.FrameOf(t);
    if (keyFrames.empty() || meshFrame == frame) {
        return object.mesh;
    }
    meshFrame = frame;
    const eKeySpan span = FindKeys(keyFrames, frame, keyHint);
    const std::vector<host::Point3>& before = object.vertexKeys[span.before].vertices;
    const std::vector<host::Point3>& after = object.vertexKeys[span.after].vertices;
    const auto fraction = static_cast<float>(span.fraction);
    for (std::size_t v = 0; v < object.mesh.verts.size(); ++v) {
        object.mesh.verts[v] = before[v] + (after[v] - before[v]) * fraction;
    }
    return object.mesh;
}

void eGeometryObject::ReleaseMesh() {
    tessellation.reset();
    if (auto* object = std::get_if<eMeshObject>(&kind)) {
        const auto release = [](auto& table) { std::decay_t<decltype(table)>().swap(table); };
        release(object->mesh.faceNormals);
        release(object->mesh.renderVerts);
        release(object->mesh.renderNormals);
    }
}

}  // namespace standalone
