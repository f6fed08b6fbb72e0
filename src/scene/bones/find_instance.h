#pragma once

class Export;

namespace host {
class INode;
class Object;
}  // namespace host

// The first node at or below `root`, in depth-first order and at time 0, that shows the object, and null if
// it is the only one: then the object is not shared. Group members and what lies below them don't count. From
// a Structure on neither do the Structures nested in it: they have a common folder of their own, which nobody
// else looks into. The whole tree is read at the first question and kept until another root is asked for.
host::INode* FindInstance(Export& run, const host::Object* object, host::INode& root);
