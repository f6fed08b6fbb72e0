#include "platform/message_box.h"

#include <utility>

#include "platform/system_box.h"

namespace platform {
namespace {

eMessageBoxSink& CurrentSink() {
    static eMessageBoxSink sink;
    return sink;
}

}  // namespace

eBoxAnswer ShowMessageBox(const eMessageBox& box) {
    const eMessageBoxSink& sink = CurrentSink();
    return sink ? sink(box) : ShowSystemBox(box);
}

eMessageBoxSink SetMessageBoxSink(eMessageBoxSink sink) {
    return std::exchange(CurrentSink(), std::move(sink));
}

}  // namespace platform
