#include "scene/triangle_mesh.h"

eTriangleMesh::eTriangleMesh(host::INode& node, host::TimeValue t) {
    host::Object* object = node.EvalWorldState(t).obj;
    if (object == nullptr || !object->CanConvertToType(host::kTriObjectClass)) {
        return;
    }
    host::Object* result = object->ConvertToType(t, host::kTriObjectClass);
    if (result != object) {
        converted.reset(result);
    }
    triangles = dynamic_cast<host::TriObject*>(result);
}
