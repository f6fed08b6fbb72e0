#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "host/interface.h"

namespace standalone {

// The undo of the scene. Whoever changes an element records the way back first.
class eHold : public host::Hold {
public:
    void Begin() override;
    // Takes back everything since the innermost Begin, the latest change first. Nothing to do without a
    // Begin.
    void Cancel() override;

    // `undo` runs when the hold is cancelled; outside a hold it is dropped, as nobody can ask for it.
    void Record(std::function<void()> undo);

private:
    std::vector<std::function<void()>> changes;
    std::vector<std::size_t> begins;  // per open Begin: the number of changes before it
};

}  // namespace standalone
