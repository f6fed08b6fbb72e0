#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {

eJsonIndex FindJson(const eJsonTree& json, eJsonIndex from, std::initializer_list<std::string_view> keys) {
    for (const std::string_view key : keys) {
        if (from == kNoJson || !json.Is(from, eJsonKind::Object)) {
            return kNoJson;
        }
        from = json.FindMember(from, key);
    }
    return from;
}

std::vector<eJsonIndex> JsonElements(const eJsonTree& json, eJsonIndex list) {
    std::vector<eJsonIndex> elements;
    if (list != kNoJson) {
        elements.reserve(json.Count(list));
        for (const eJsonIndex element : json.Children(list)) {
            elements.push_back(element);
        }
    }
    return elements;
}

std::int64_t JsonWhole(const eJsonTree& json, eJsonIndex object, std::string_view key,
                       std::int64_t otherwise) {
    const eJsonIndex value = json.FindMember(object, key);
    return value == kNoJson ? otherwise : json.values[value].integer;
}

std::string_view JsonText(const eJsonTree& json, eJsonIndex object, std::string_view key) {
    const eJsonIndex value = json.FindMember(object, key);
    return value == kNoJson ? std::string_view() : json.Text(value);
}

}  // namespace standalone
