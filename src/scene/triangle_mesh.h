#pragma once

#include <memory>

#include "host/node.h"
#include "host/object.h"

// A node's object as a triangle mesh at a moment of time. The host may answer with a new object or with one
// of its own; a new one lives as long as this record.
class eTriangleMesh {
public:
    // Evaluates the node. Invalid if it has no object or the object can't become triangles.
    eTriangleMesh(host::INode& node, host::TimeValue t);

    bool IsValid() const { return triangles != nullptr; }
    // In object space, in scene units. Only for a valid one, until the next evaluation of any node.
    host::Mesh& Mesh() const { return triangles->GetMesh(); }

private:
    host::TriObject* triangles = nullptr;
    std::unique_ptr<host::Object> converted;
};
