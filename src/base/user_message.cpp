#include "base/user_message.h"

#include "base/ansi.h"
#include "platform/message_box.h"

namespace {

void ShowMessage(void* parent, const char* title, platform::eBoxIcon icon, const std::string& text) {
    platform::eMessageBox box;
    box.text = text;
    box.title = title;
    box.icon = icon;
    box.parent = parent;
    platform::ShowMessageBox(box);
}

}  // namespace

void ShowError(void* parent, const std::string& text) {
    ShowMessage(parent, "Ошибка"_ansi, platform::eBoxIcon::Stop, text);
}

void ShowWarning(void* parent, const std::string& text) {
    ShowMessage(parent, "Предупреждение"_ansi, platform::eBoxIcon::Warning, text);
}
