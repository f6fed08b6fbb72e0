#include "io/repository/part_name.h"

namespace xIo {

bool IsPartName(const std::string& name) {
    const std::size_t title = name.rfind('/') + 1;  // 0 without a slash
    const std::size_t dot = name.rfind('.');
    const std::size_t end = dot == std::string::npos || dot < title ? name.size() : dot;
    return end > title && name[end - 1] == '+';
}

bool eMountOrder::operator()(const std::string& first, const std::string& second) const {
    const bool isPart = IsPartName(first);
    return isPart == IsPartName(second) ? first < second : !isPart;
}

}  // namespace xIo
