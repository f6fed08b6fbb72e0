#pragma once

#include <string>

namespace host {
class INode;
}  // namespace host

// What a node is for the game. Every kind but Ordinary keeps the node, and all below it, out of the skeleton.
enum class eNodeKind {
    Ordinary = 0,      // may become a bone
    Volume = 1,        // "Volume" or "Component"
    SupportPoint = 2,  // "SupportPoint"
    Zone = 3,          // "Obstacle" or "Area"
    Body = 4,          // "Body"
    Preview = 5,       // "Preview"
    Camera = 6,        // by the node's object, as the two below
    Light = 7,
    Target = 8,
};

// Properties go before the object, which is looked at evaluated at time 0.
eNodeKind ClassifyNode(host::INode& node);
// The same for a caller that has the node's text of NormalizeUserProps at hand. `decidedBy` gets the property
// that decided, as the text has it; it stays as it is where the object decides.
eNodeKind ClassifyNode(host::INode& node, const std::string& userProps, std::string* decidedBy = nullptr);

// True if the node shows lines, which have no faces: at time 0.
bool IsShape(host::INode& node);
