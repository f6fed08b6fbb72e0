#include "scene/properties/told_values.h"

#include <algorithm>
#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"

void TellBadValue(Export& run, const host::INode& node, const char* key, const char* badInValue) {
    std::string value;
    node.GetUserPropString(key, value);
    const auto isForeign = [](char byte) { return static_cast<unsigned char>(byte) > 0x7F; };
    if (std::ranges::any_of(value, isForeign) || value.find_first_of(badInValue) != std::string::npos) {
        const auto text =
            format("Значение '%s' свойства '%s' узла '%s' содержит недопустимые символы."_ansi) % value %
            key % node.GetName();
        ShowWarning(run.host->GetMAXHWnd(), text.Text());
    }
}
