// The platform's own way to show a box, behind the sink of message_box.h.
#pragma once

#include "platform/message_box.h"

namespace platform {

eBoxAnswer ShowSystemBox(const eMessageBox& box);

}  // namespace platform
