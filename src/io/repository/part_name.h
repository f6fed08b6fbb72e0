#pragma once

#include <string>

namespace xIo {

// Whether the name is that of a part of a multi-part resource, which is added to its whole when it is
// mounted: "x+.txt" belongs to "x.txt".
bool IsPartName(const std::string& name);

// Byte order, but parts behind all wholes, so that each finds its own when they are mounted in this order.
struct eMountOrder {
    bool operator()(const std::string& first, const std::string& second) const;
};

}  // namespace xIo
