#include "io/streams/file_failure.h"

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"

namespace xIo {
namespace {

std::string ReasonText(const platform::eIoStatus& status) {
    switch (status.reason) {
        case platform::eIoReason::NotFound:
            return "файл или папка не найдены"_ansi;
        case platform::eIoReason::AccessDenied:
            return "нет доступа"_ansi;
        case platform::eIoReason::NoSpace:
            return "нет места на диске"_ansi;
        case platform::eIoReason::NoDrive:
            return "нет такого диска"_ansi;
        case platform::eIoReason::Fenced:
            return "путь лежит за пределами ресурсов игры"_ansi;
        default:
            return status.Text();
    }
}

void TellFailure(const char* pattern, const std::string& path, const platform::eIoStatus& status,
                 const std::string& owner) {
    const auto failure = format(pattern) % path % ReasonText(status);
    ShowError(nullptr, failure.Text() + (owner.empty() ? "" : "\n" + owner));
}

}  // namespace

void TellWriteFailure(const std::string& path, const platform::eIoStatus& status, const std::string& owner) {
    TellFailure("Не удалось записать файл '%1%': %2%."_ansi, path, status, owner);
}

void TellReadFailure(const std::string& path, const platform::eIoStatus& status, const std::string& owner) {
    TellFailure("Не удалось прочитать файл '%1%': %2%."_ansi, path, status, owner);
}

}  // namespace xIo
