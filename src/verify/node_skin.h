#pragma once

#include "host/node.h"

namespace verify {

// The skin modifier of a node that does not forbid it, or null.
host::Modifier* FindSkinModifier(const host::INode& node);

// While it lives the node shows its mesh as it was before the skin bent it. A node with "OldSkin" stays bent.
class eRestPose {
public:
    explicit eRestPose(const host::INode& node);
    ~eRestPose();
    eRestPose(const eRestPose&) = delete;
    eRestPose& operator=(const eRestPose&) = delete;

private:
    host::Modifier* skin_;
};

}  // namespace verify
