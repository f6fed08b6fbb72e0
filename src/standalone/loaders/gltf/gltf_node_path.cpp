#include "standalone/loaders/gltf/gltf_node_path.h"

#include <charconv>
#include <optional>
#include <string_view>

#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {
namespace {

constexpr std::string_view kNodes = "/nodes/";

std::optional<std::size_t> NodeAt(std::string_view place) {
    std::size_t node = 0;
    if (!place.starts_with(kNodes)) {
        return std::nullopt;
    }
    place.remove_prefix(kNodes.size());
    const auto read = std::from_chars(place.data(), place.data() + place.size(), node);
    return read.ec == std::errc() ? std::optional(node) : std::nullopt;
}

class eNodePaths {
public:
    explicit eNodePaths(const eJsonTree& document)
        : json(document), nodes(Nodes(document)), parents(nodes.size()) {
        for (std::size_t node = 0; node < nodes.size(); ++node) {
            for (const eJsonIndex child : Members(nodes[node], "children", eJsonKind::Array)) {
                NoteChild(node, child);
            }
        }
    }

    std::string PathOf(std::size_t node) const {
        std::string path;
        std::optional<std::size_t> step = node;
        // Nodes of a broken file may hang below one another.
        for (std::size_t level = 0; step && *step < nodes.size() && level < nodes.size(); ++level) {
            path = NameOf(*step) + (path.empty() ? "" : "/") + path;
            step = parents[*step];
        }
        return path;
    }

private:
    static std::vector<eJsonIndex> Nodes(const eJsonTree& json) {
        return json.values.empty() || !json.Is(kJsonRoot, eJsonKind::Object)
                   ? std::vector<eJsonIndex>()
                   : Elements(json, json.FindMember(kJsonRoot, "nodes"), eJsonKind::Array);
    }
    static std::vector<eJsonIndex> Elements(const eJsonTree& json, eJsonIndex value, eJsonKind kind) {
        return value != kNoJson && json.Is(value, kind) ? JsonElements(json, value)
                                                        : std::vector<eJsonIndex>();
    }
    std::vector<eJsonIndex> Members(eJsonIndex object, std::string_view key, eJsonKind kind) const {
        return json.Is(object, eJsonKind::Object) ? Elements(json, json.FindMember(object, key), kind)
                                                  : std::vector<eJsonIndex>();
    }

    void NoteChild(std::size_t node, eJsonIndex child) {
        const std::int64_t number = json.Is(child, eJsonKind::Integer) ? json.values[child].integer : -1;
        if (number >= 0 && static_cast<std::size_t>(number) < parents.size()) {
            parents[static_cast<std::size_t>(number)] = node;
        }
    }

    // As the import calls a node without a name.
    std::string NameOf(std::size_t node) const {
        const eJsonIndex object = nodes[node];
        const eJsonIndex name =
            json.Is(object, eJsonKind::Object) ? json.FindMember(object, "name") : kNoJson;
        const bool isText = name != kNoJson && json.Is(name, eJsonKind::Text) && !json.Text(name).empty();
        return isText ? std::string(json.Text(name)) : "node_" + std::to_string(node);
    }

    const eJsonTree& json;
    std::vector<eJsonIndex> nodes;
    std::vector<std::optional<std::size_t>> parents;
};

}  // namespace

void NameGltfNodes(const eJsonTree& json, std::vector<eLoadMessage>& problems) {
    if (problems.empty()) {
        return;
    }
    const eNodePaths paths(json);
    for (eLoadMessage& problem : problems) {
        if (const std::optional<std::size_t> node = NodeAt(problem.place)) {
            problem.node = paths.PathOf(*node);
        }
    }
}

}  // namespace standalone
