#pragma once

#include <memory>

#include "standalone/objects/derived_object.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;
class eSceneNode;

// An object of the document: the object itself and, where there are modifiers, the derived object above it.
class eSceneObject {
public:
    // `place` counts the objects of the document. The record must outlive the object.
    eSceneObject(eScene& scene, eObjectData& data, std::size_t place);

    // What a node refers to.
    host::Object& Reference() const { return derived != nullptr ? *derived : *base; }
    // What it evaluates to.
    host::Object& Evaluated(const eSceneNode& node) const {
        return derived != nullptr ? derived->Evaluated(node) : *base;
    }

private:
    std::unique_ptr<host::Object> base;
    std::unique_ptr<eDerivedObject> derived;  // only with modifiers
};

}  // namespace standalone
