#include "platform/system_box.h"

#include <cstdio>
#include <string>

#include "platform/code_page.h"

namespace platform {

eBoxAnswer ShowSystemBox(const eMessageBox& box) {
    const std::string line = Utf8FromAnsi(box.title + ": " + box.text + "\n");
    std::fwrite(line.data(), 1, line.size(), stderr);
    return box.buttons == eBoxButtons::Ok ? eBoxAnswer::Ok : eBoxAnswer::Cancel;
}

}  // namespace platform
