#pragma once

#include "host/object.h"

// Switches a modifier off while the object lives, so that the host gives the mesh as it is below it, and on
// again whatever way the block is left. A null modifier is no work.
class eSkinSwitch {
public:
    explicit eSkinSwitch(host::Modifier* modifier);
    ~eSkinSwitch();
    eSkinSwitch(const eSkinSwitch&) = delete;
    eSkinSwitch& operator=(const eSkinSwitch&) = delete;

private:
    host::Modifier* modifier_;
};
