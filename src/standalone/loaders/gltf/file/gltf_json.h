// Looking into the JSON text of a glTF file whose form has been checked (gltf_schema.h).
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// The value at the end of the way of keys, or kNoJson where the way breaks off.
eJsonIndex FindJson(const eJsonTree& json, eJsonIndex from, std::initializer_list<std::string_view> keys);

// The elements of a list; none for kNoJson.
std::vector<eJsonIndex> JsonElements(const eJsonTree& json, eJsonIndex list);
// The same for a list at the top of the document.
inline std::vector<eJsonIndex> GltfEntries(const eJsonTree& json, std::string_view list) {
    return JsonElements(json, json.FindMember(kJsonRoot, list));
}

// The whole number of a member, or `otherwise` where it is missing.
std::int64_t JsonWhole(const eJsonTree& json, eJsonIndex object, std::string_view key,
                       std::int64_t otherwise);

// The text of a member, empty where it is missing.
std::string_view JsonText(const eJsonTree& json, eJsonIndex object, std::string_view key);

}  // namespace standalone
