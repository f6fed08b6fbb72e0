#include "platform/process_state.h"

namespace platform {
namespace {

eProcessState* lentState = nullptr;

}  // namespace

eProcessState& ProcessState() {
    static eProcessState ownState;
    return lentState != nullptr ? *lentState : ownState;
}

void UseProcessState(eProcessState* state) {
    lentState = state;
}

}  // namespace platform
