#include "scene/properties/node_kind.h"

#include "host/node.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/prop_text.h"

namespace {

struct eKindKey {
    const char* key;
    eNodeKind kind;
};

// The first hit decides.
constexpr eKindKey kKindKeys[] = {
    {"Volume", eNodeKind::Volume},
    {"Component", eNodeKind::Volume},
    {"SupportPoint", eNodeKind::SupportPoint},
    {"Obstacle", eNodeKind::Zone},
    {"Area", eNodeKind::Zone},
    {"Body", eNodeKind::Body},
    {"Preview", eNodeKind::Preview},
};

std::string PairText(const ePropText& pair) {
    std::string text(pair.Key());
    if (!pair.Value().empty()) {
        text.append("=").append(pair.Value());
    }
    return text;
}

eNodeKind KindOfObject(const host::Object* object) {
    if (object == nullptr) {
        return eNodeKind::Ordinary;
    }
    switch (object->SuperClassID()) {
        case host::kLightSuperClass:
            return eNodeKind::Light;
        case host::kCameraSuperClass:
            return eNodeKind::Camera;
        default:
            return object->ClassID() == host::kTargetClass ? eNodeKind::Target : eNodeKind::Ordinary;
    }
}

}  // namespace

eNodeKind ClassifyNode(host::INode& node) {
    return ClassifyNode(node, NormalizeUserProps(node, false));
}

eNodeKind ClassifyNode(host::INode& node, const std::string& userProps, std::string* decidedBy) {
    ePropText pairs(userProps);
    for (const eKindKey& entry : kKindKeys) {
        if (pairs.Find(entry.key)) {
            if (decidedBy != nullptr) {
                *decidedBy = PairText(pairs);
            }
            return entry.kind;
        }
    }
    return KindOfObject(node.EvalWorldState(0).obj);
}

bool IsShape(host::INode& node) {
    const host::Object* object = node.EvalWorldState(0).obj;
    return object != nullptr && object->SuperClassID() == host::kShapeSuperClass;
}
