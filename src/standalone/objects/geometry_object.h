#pragma once

#include <optional>
#include <vector>

#include "host/object.h"
#include "standalone/objects/element.h"
#include "standalone/objects/recent_meshes.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;

// Geometry that becomes a triangle mesh: answers as the triangle object itself, so that a conversion copies
// nothing and leaves nothing to delete.
class eTriangleObject : public eElement<host::TriObject>, public eMeshHolder {
public:
    using eElement::eElement;

    std::uint32_t SuperClassID() const override { return host::kGeometrySuperClass; }
    bool CanConvertToType(const host::ClassId& id) const override { return id == host::kTriObjectClass; }
    host::Object* ConvertToType(host::TimeValue t, const host::ClassId& id) override;
    host::Box3 GetDeformBBox(host::TimeValue t) const override;
    // The mesh of the latest conversion, of time 0 before any.
    host::Mesh& GetMesh() override { return Evaluate(lastTime); }

    // The mesh at the time. It stays until a number of other objects have been evaluated (eRecentMeshes).
    virtual host::Mesh& Evaluate(host::TimeValue t) const = 0;

private:
    host::TimeValue lastTime = 0;
};

// A mesh of the document, or a primitive.
class eGeometryObject : public eTriangleObject {
public:
    // `kind` holds one of the four convertible kinds; a mesh stays in its record and is evaluated there.
    eGeometryObject(eScene& scene, std::size_t place, eObjectKind& kind);

    host::ClassId ClassID() const override;
    host::Mesh& Evaluate(host::TimeValue t) const override;
    void ReleaseMesh() override;

private:
    host::Mesh& EvaluateMesh(eMeshObject& object, host::TimeValue t) const;

    eScene& scene;
    eObjectKind& kind;
    std::vector<double> keyFrames;  // of the vertex keys
    mutable std::size_t keyHint = 0;
    mutable std::optional<double> meshFrame;         // that the vertices stand at, where there are keys
    mutable std::optional<host::Mesh> tessellation;  // of a primitive, while it is in use
};

}  // namespace standalone
