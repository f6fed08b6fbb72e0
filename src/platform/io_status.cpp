#include "platform/io_status.h"

#include <system_error>

namespace platform {

std::string eIoStatus::Text() const {
    switch (reason) {
        case eIoReason::None:
            return "no error";
        case eIoReason::NoDrive:
            return "no folder stands for this drive letter";
        case eIoReason::Fenced:
            return "outside the folders that may be written";
        default:
            return std::system_category().message(code);
    }
}

}  // namespace platform
