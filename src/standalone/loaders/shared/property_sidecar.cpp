#include "standalone/loaders/shared/property_sidecar.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <vector>

#include "base/ansi.h"
#include "standalone/data/node_path.h"
#include "standalone/data/property_lines.h"
#include "standalone/data/property_reader.h"
#include "standalone/loaders/shared/node_state.h"

namespace standalone {
namespace {

constexpr std::string_view kScene = "/";
constexpr std::string_view kSelection = "host.selection.";
constexpr std::size_t kNearestNames = 3;

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string_view> LinesOf(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        if (const std::string_view line = Trimmed(text.substr(0, end)); !line.empty()) {
            lines.push_back(line);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string_view KeyOf(std::string_view line) {
    return Trimmed(line.substr(0, line.find('=')));
}

// How many letters must be put in, taken out or changed to make one name of the other.
std::size_t Distance(const std::string& one, const std::string& other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

class eSidecarReader {
public:
    eSidecarReader(eSceneData& ownScene, eImportReport& ownReport) : scene(ownScene), report(ownReport) {
        for (std::size_t node = 0; node < scene.nodes.size(); ++node) {
            names.push_back(LowerAnsi(scene.nodes[node].name));
            paths.push_back(LowerAnsi(PathOfNode(scene, node)));
        }
    }

    void Read(std::string_view utf8) {
        for (const std::string_view line : LinesOf(utf8, "\r\n")) {
            if (line.starts_with('[') && line.ends_with(']')) {
                Open(line.substr(1, line.size() - 2));
            } else if (!line.starts_with('#')) {
                Take(line);
            }
        }
    }

private:
    void Open(std::string_view heading) {
        hasHeading = true;
        isScene = heading == kScene;
        changed.clear();
        const bool replaces = heading.starts_with('=');
        nodes = isScene ? std::vector<std::size_t>() : Find(heading.substr(replaces ? 1 : 0));
        for (const std::size_t node : nodes) {
            if (replaces) {
                scene.nodes[node].properties.clear();
            }
        }
    }

    std::vector<std::size_t> Find(std::string_view heading) {
        const std::string wanted = LowerAnsi(FromUtf8(heading).text);
        std::vector<std::size_t> found;
        for (std::size_t node = 0; node < names.size(); ++node) {
            if (names[node] == wanted || paths[node] == wanted) {
                found.push_back(node);
            }
        }
        if (found.empty()) {
            report.Notice(eMessageId::ImportNoSuchNode,
                          Utf8Words(ePhrase::NearestNodes, heading, Nearest(wanted)));
        }
        return found;
    }

    std::string Nearest(const std::string& wanted) const {
        const bool isPath = wanted.find('/') != std::string::npos;
        std::set<std::pair<std::size_t, std::string>> all;
        for (std::size_t node = 0; node < names.size(); ++node) {
            all.emplace(Distance(wanted, isPath ? paths[node] : names[node]),
                        isPath ? PathOfNode(scene, node) : scene.nodes[node].name);
        }
        std::string nearest;
        for (const auto& [distance, name] : all) {
            nearest += (nearest.empty() ? "" : ", ") + ToUtf8(name);
            if (static_cast<std::size_t>(std::ranges::count(nearest, ',')) + 1 == kNearestNames) {
                break;
            }
        }
        return nearest;
    }

    void Take(std::string_view line) {
        if (!hasHeading) {
            report.Problem("", eMessageId::ScenePropertiesNoHeading, line);
        } else if (isScene) {
            TakeSceneLine(line);
        } else {
            const std::string text = report.Ansi(line);
            const bool isFirst = changed.insert(LowerAnsi(KeyOf(text))).second;
            for (const std::size_t node : nodes) {
                Change(scene.nodes[node].properties, text, isFirst);
            }
        }
    }

    // The first line of a key takes the place of all lines that the node had of it.
    static void Change(std::string& properties, const std::string& line, bool isFirst) {
        if (isFirst && eUserProperties(properties).Find(KeyOf(line))) {
            std::string others;
            for (const std::string_view old : LinesOf(properties, "\r\n")) {
                if (!EqualNoCase(KeyOf(old), KeyOf(line))) {
                    AppendPropertyLine(others, old);
                }
            }
            properties = std::move(others);
        }
        AppendPropertyLine(properties, line);
    }

    void TakeSceneLine(std::string_view line) {
        const std::string_view key = KeyOf(line);
        if (!key.starts_with(kSelection)) {
            report.Notice(eMessageId::ImportUnknownExtras, key);
            return;
        }
        eSelectionSet set{report.Ansi(key.substr(kSelection.size())), {}};
        const std::size_t value = std::min(line.find('='), line.size() - 1) + 1;
        for (const std::string_view name : LinesOf(line.substr(value), ",")) {
            for (const std::size_t node : Find(name)) {
                set.nodes.push_back(static_cast<int>(node));
            }
        }
        // The first set of a name wins.
        scene.selectionSets.insert(scene.selectionSets.begin(), std::move(set));
    }

    eSceneData& scene;
    eImportReport& report;
    std::vector<std::string> names, paths;  // by node, lower case
    bool hasHeading = false;
    bool isScene = false;
    std::vector<std::size_t> nodes;  // of the heading
    std::set<std::string> changed;   // keys under the heading, lower case
};

}  // namespace

void ApplyPropertySidecar(std::string_view utf8, eSceneData& scene, eImportReport& report) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (utf8.starts_with(kByteOrderMark)) {
        utf8.remove_prefix(kByteOrderMark.size());
    }
    eSidecarReader(scene, report).Read(utf8);
}

std::string PropertySidecarOf(const eSceneData& scene) {
    std::string text;
    for (std::size_t node = 0; node < scene.nodes.size(); ++node) {
        text += (text.empty() ? "[" : "\n[") + PathOfNode(scene, node) + "]\n";
        for (const std::string_view line : LinesOf(scene.nodes[node].properties, "\r\n")) {
            text += std::string(line) + "\n";
        }
    }
    return ToUtf8(text);
}

}  // namespace standalone
