#include "scene/properties/node_name.h"

#include "base/number_text.h"
#include "host/node.h"

int GetLodLevel(const host::INode& node) {
    return LodLevelOfName(CleanNodeName(node.GetName(), true));
}

int LodLevelOfName(std::string_view cleanedName) {
    constexpr std::string_view kMark = "_lod";
    const std::size_t mark = cleanedName.find(kMark);
    return mark == std::string_view::npos ? 0 : ReadInteger(cleanedName.substr(mark + kMark.size()));
}
