#include "standalone/loaders/shared/take_declarations.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/ansi.h"
#include "standalone/data/property_lines.h"
#include "standalone/data/property_reader.h"
#include "standalone/loaders/shared/unique_names.h"

namespace standalone {
namespace {

// A name that survives the reading of a declaration and can be a file: letters and digits of ASCII, blanks
// and plain signs.
std::string TakeName(const std::string& utf8, int animation) {
    constexpr std::string_view kUnsafe = ",;=/\\:*?\"<>|";
    std::string name = FromUtf8(utf8).text;
    std::ranges::replace_if(
        name,
        [&](char byte) {
            return static_cast<signed char>(byte) < ' ' || kUnsafe.find(byte) != std::string_view::npos;
        },
        '_');
    const bool isOnlyDotsAndBlanks = name.find_first_not_of(". ") == std::string::npos;
    return isOnlyDotsAndBlanks ? "animation_" + std::to_string(animation) : name;
}

bool DeclaresAnimation(const eNodeData& node) {
    const eUserProperties properties(node.properties);
    constexpr std::array<const char*, 3> kKeys = {"animation", "animationresume", "animationauto"};
    return std::ranges::any_of(kKeys, [&](const char* key) { return properties.Find(key).has_value(); });
}

// Per node, its model.
std::vector<int> ModelsOf(const eSceneData& scene) {
    std::vector<int> models(scene.nodes.size(), -1);
    const auto visit = [&](int node, int above) {
        const eNodeData& record = scene.nodes[static_cast<std::size_t>(node)];
        const bool isModel = above < 0 || eUserProperties(record.properties).Find("Model").has_value();
        models[static_cast<std::size_t>(node)] = isModel ? node : above;
    };
    std::vector<int> waiting = scene.roots;
    for (const int root : scene.roots) {
        visit(root, -1);
    }
    while (!waiting.empty()) {
        const int node = waiting.back();
        waiting.pop_back();
        for (const int child : scene.nodes[static_cast<std::size_t>(node)].children) {
            visit(child, models[static_cast<std::size_t>(node)]);
            waiting.push_back(child);
        }
    }
    return models;
}

std::string LineOf(const eDeclaration& declaration) {
    return "animation=" + declaration.name + "," + declaration.selection + "," +
           std::to_string(declaration.firstFrame) + "-" + std::to_string(declaration.lastFrame);
}

// The models among whose nodes the set has members, each once.
std::vector<int> OwnersOf(const eSelectionSet& set, const std::vector<int>& models) {
    std::vector<int> owners;
    for (const int node : set.nodes) {
        owners.push_back(models[static_cast<std::size_t>(node)]);
    }
    std::ranges::sort(owners);
    owners.erase(std::unique(owners.begin(), owners.end()), owners.end());
    return owners;
}

}  // namespace

std::vector<eDeclaration> AddTakeSets(eSceneData& scene, const std::vector<eTake>& takes) {
    std::vector<eDeclaration> declarations;
    eUniqueNames takeNames, setNames;
    for (const eSelectionSet& set : scene.selectionSets) {
        setNames.Take(set.name);
    }
    for (const eTake& take : takes) {
        const std::string name = takeNames.Take(TakeName(take.name, take.number));
        declarations.push_back(
            {name, take.firstFrame, take.lastFrame, setNames.Take(name), scene.selectionSets.size()});
        scene.selectionSets.push_back({declarations.back().selection, take.moved});
        std::vector<int>& members = scene.selectionSets.back().nodes;
        std::ranges::sort(members);
        members.erase(std::unique(members.begin(), members.end()), members.end());
    }
    return declarations;
}

void DeclareTakes(eSceneData& scene, const std::vector<eDeclaration>& declarations) {
    const std::vector<int> models = ModelsOf(scene);
    std::vector<bool> declaresItself;
    for (const eNodeData& node : scene.nodes) {
        declaresItself.push_back(DeclaresAnimation(node));
    }
    std::vector<std::size_t> unused;
    for (const eDeclaration& declaration : declarations) {
        bool isDeclared = false;
        for (const int owner : OwnersOf(scene.selectionSets[declaration.selectionSet], models)) {
            if (!declaresItself[static_cast<std::size_t>(owner)]) {
                AppendPropertyLine(scene.nodes[static_cast<std::size_t>(owner)].properties,
                                   LineOf(declaration));
                isDeclared = true;
            }
        }
        if (!isDeclared) {
            unused.push_back(declaration.selectionSet);
            continue;
        }
        scene.firstFrame = std::min(scene.firstFrame, declaration.firstFrame);
        scene.lastFrame = std::max(scene.lastFrame, declaration.lastFrame);
    }
    for (auto set = unused.rbegin(); set != unused.rend(); ++set) {
        scene.selectionSets.erase(scene.selectionSets.begin() + static_cast<std::ptrdiff_t>(*set));
    }
}

}  // namespace standalone
