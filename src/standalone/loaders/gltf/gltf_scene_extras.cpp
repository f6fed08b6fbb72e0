#include "standalone/loaders/gltf/gltf_scene_extras.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

#include "base/ansi.h"
#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {
namespace {

constexpr std::string_view kPrefix = "host.";
constexpr std::string_view kSelection = "host.selection.";
constexpr double kMostFramesPerSecond = 10000;

eJsonIndex SceneExtras(const eJsonTree& json, int scene) {
    if (scene < 0) {
        return kNoJson;
    }
    return json.FindMember(GltfEntries(json, "scenes")[static_cast<std::size_t>(scene)], "extras");
}

class eSceneExtras {
public:
    explicit eSceneExtras(eGltfImport& ownImport)
        : import(ownImport), json(ownImport.json), nodesByName(NodesByName(ownImport.scene)) {}

    void Read(eJsonIndex extras) {
        for (const eJsonIndex member : JsonElements(json, extras)) {
            const std::string_view key = json.Key(member);
            if (key == "host.range") {
                ReadRange(member);
            } else if (key == "host.ambient") {
                ReadAmbient(member);
            } else if (key == "host.metres_per_unit") {
                ReadUnit(member);
            } else if (key.starts_with(kSelection)) {
                ReadSelection(member, key.substr(kSelection.size()));
            } else if (key.starts_with(kPrefix) && key != "host.fps") {
                import.report.Notice(eMessageId::ImportUnknownExtras, key);
            }
        }
    }

private:
    void Refuse(eJsonIndex value, ePhrase expected) {
        import.report.Problem(json.PathOf(value), eMessageId::GltfExpected, Utf8Words(expected));
    }

    void ReadRange(eJsonIndex value) {
        const std::vector<eJsonIndex> frames = JsonElements(json, value);
        const std::int64_t most = std::numeric_limits<int>::max() / import.scene.frameTicks;
        bool isGood = json.Is(value, eJsonKind::Array) && frames.size() == 2;
        for (const eJsonIndex frame : frames) {
            isGood =
                isGood && json.Is(frame, eJsonKind::Integer) && std::abs(json.values[frame].integer) <= most;
        }
        if (!isGood || json.values[frames[0]].integer > json.values[frames[1]].integer) {
            Refuse(value, ePhrase::JsonFrames);
            return;
        }
        import.scene.firstFrame = static_cast<int>(json.values[frames[0]].integer);
        import.scene.lastFrame = static_cast<int>(json.values[frames[1]].integer);
    }

    void ReadAmbient(eJsonIndex value) {
        const std::vector<eJsonIndex> parts = JsonElements(json, value);
        float color[3] = {};
        bool isGood = json.Is(value, eJsonKind::Array) && parts.size() == 3;
        for (std::size_t i = 0; i < 3 && isGood; ++i) {
            const std::optional<float> part = json.Float(parts[i]);
            isGood = part && *part >= 0 && *part <= 1;
            color[i] = part.value_or(0);
        }
        if (!isGood) {
            Refuse(value, ePhrase::JsonColor);
            return;
        }
        import.scene.ambient = {color[0], color[1], color[2]};
    }

    void ReadUnit(eJsonIndex value) {
        const std::optional<double> metres = json.Double(value);
        if (!metres || !(*metres > 0)) {
            Refuse(value, ePhrase::JsonAboveZero);
            return;
        }
        import.scene.unitMetres = *metres;
    }

    // The nodes as a list of names, or as one text with commas between them.
    void ReadSelection(eJsonIndex value, std::string_view name) {
        eSelectionSet& set = import.scene.selectionSets.emplace_back();
        set.name = import.report.Ansi(name);
        if (json.Is(value, eJsonKind::Text)) {
            std::string_view names = json.Text(value);
            for (std::size_t comma = 0; comma != std::string_view::npos && !names.empty();) {
                comma = names.find(',');
                Select(set, names.substr(0, comma));
                names.remove_prefix(comma == std::string_view::npos ? names.size() : comma + 1);
            }
            return;
        }
        for (const eJsonIndex element : JsonElements(json, value)) {
            if (json.Is(element, eJsonKind::Text)) {
                Select(set, json.Text(element));
            } else {
                Refuse(element, ePhrase::JsonNodeName);
            }
        }
        if (!json.Is(value, eJsonKind::Array)) {
            Refuse(value, ePhrase::JsonNodeNames);
        }
    }

    void Select(eSelectionSet& set, std::string_view utf8) {
        const std::size_t first = utf8.find_first_not_of(' ');
        if (first == std::string_view::npos) {
            return;
        }
        utf8 = utf8.substr(first, utf8.find_last_not_of(' ') - first + 1);
        const auto found = nodesByName.find(LowerAnsi(import.report.Ansi(utf8)));
        if (found == nodesByName.end()) {
            import.report.Notice(eMessageId::ImportUnknownNode, utf8);
        } else {
            set.nodes.push_back(found->second);
        }
    }

    // Of several nodes with one name the first counts, letter case ignored, as in the host.
    static std::unordered_map<std::string, int> NodesByName(const eSceneData& scene) {
        std::unordered_map<std::string, int> nodes;
        for (std::size_t node = 0; node < scene.nodes.size(); ++node) {
            nodes.try_emplace(LowerAnsi(scene.nodes[node].name), static_cast<int>(node));
        }
        return nodes;
    }

    eGltfImport& import;
    const eJsonTree& json;
    std::unordered_map<std::string, int> nodesByName;
};

}  // namespace

std::optional<double> ReadGltfFrameRate(const eJsonTree& json, int scene, eImportReport& report) {
    const eJsonIndex value = FindJson(json, SceneExtras(json, scene), {"host.fps"});
    if (value == kNoJson) {
        return std::nullopt;
    }
    const std::optional<double> rate = json.Double(value);
    if (!rate || !(*rate > 0) || *rate > kMostFramesPerSecond) {
        report.Problem(json.PathOf(value), eMessageId::GltfExpected, Utf8Words(ePhrase::JsonAboveZero));
        return std::nullopt;
    }
    return rate;
}

void ReadGltfSceneExtras(eGltfImport& import, const std::vector<eGltfClip>& clips) {
    if (!clips.empty()) {
        import.scene.firstFrame = std::ranges::min(clips, {}, &eGltfClip::firstFrame).firstFrame;
        import.scene.lastFrame = std::ranges::max(clips, {}, &eGltfClip::lastFrame).lastFrame;
    }
    const eJsonIndex extras = SceneExtras(import.json, import.hierarchy.scene);
    if (extras != kNoJson && import.json.Is(extras, eJsonKind::Object)) {
        eSceneExtras(import).Read(extras);
    }
}

}  // namespace standalone
