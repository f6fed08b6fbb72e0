#include "inspect/same_content.h"

#include <string_view>

namespace inspect {

namespace {

std::string_view TextOf(const platform::eFileContent& content) {
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

std::string_view CutLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(line.size() < text.size() ? line.size() + 1 : text.size());
    return line;
}

// Cuts the lines with user and time, which begin a text.
std::string_view WithoutHead(std::string_view text) {
    for (const std::string_view mark : {";Exported by:", ";Date:"}) {
        if (!text.starts_with(mark)) {
            break;
        }
        CutLine(text);
    }
    return text;
}

}  // namespace

eSameness CompareContent(const platform::eFileContent& before, const platform::eFileContent& after) {
    if (before == after) {
        return eSameness::Same;
    }
    return WithoutHead(TextOf(before)) == WithoutHead(TextOf(after)) ? eSameness::ButForHead
                                                                     : eSameness::Different;
}

}  // namespace inspect
