#include "standalone/data/property_lines.h"

namespace standalone {

void AppendPropertyLine(std::string& properties, std::string_view line) {
    if (!properties.empty() && !properties.ends_with('\n')) {
        properties += "\r\n";
    }
    properties += line;
}

}  // namespace standalone
