#include "io/clean_name.h"

#include <algorithm>

#include "base/ansi.h"

namespace {

char SafeByte(char byte) {
    if (byte == '"') {
        return '\'';
    }
    return static_cast<signed char>(byte) <= ' ' ? '_' : LowerAsciiByte(byte);
}

void CutSuffix(std::string& name, std::string_view suffix) {
    if (name.size() > suffix.size() && name.ends_with(suffix)) {
        name.resize(name.size() - suffix.size());
    }
}

}  // namespace

std::string CleanNodeName(std::string_view text, bool strip) {
    std::string name(text);
    std::ranges::transform(name, name.begin(), SafeByte);
    if (strip) {
        CutSuffix(name, "_vol");
        CutSuffix(name, "_dup");
    }
    return name;
}
