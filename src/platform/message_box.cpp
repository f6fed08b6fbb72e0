#include "platform/message_box.h"

#include <utility>

#include "platform/process_state.h"
#include "platform/system_box.h"

namespace platform {

eBoxAnswer ShowMessageBox(const eMessageBox& box) {
    const eMessageBoxSink& sink = ProcessState().messageBoxSink;
    return sink ? sink(box) : ShowSystemBox(box);
}

eMessageBoxSink SetMessageBoxSink(eMessageBoxSink sink) {
    return std::exchange(ProcessState().messageBoxSink, std::move(sink));
}

}  // namespace platform
