#include "scene/node_name.h"

#include <algorithm>

#include "base/ansi.h"
#include "base/number_text.h"
#include "host/node.h"

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

int GetLodLevel(const host::INode& node) {
    return LodLevelOfName(CleanNodeName(node.GetName(), true));
}

int LodLevelOfName(std::string_view cleanedName) {
    constexpr std::string_view kMark = "_lod";
    const std::size_t mark = cleanedName.find(kMark);
    return mark == std::string_view::npos ? 0 : ReadInteger(cleanedName.substr(mark + kMark.size()));
}
