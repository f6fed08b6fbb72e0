#include "standalone/loaders/shared/import_report.h"

#include <algorithm>
#include <utility>

#include "base/ansi.h"

namespace standalone {
namespace {

// A file that is broken throughout is told in a screenful.
constexpr std::size_t kMostProblems = 100;
constexpr std::size_t kMostItems = 20;

constexpr std::array<std::string_view, 15> kHeadings = {
    "the host can't show",
    "extras left out, because property text can't hold them",
    "selection sets name nodes that the scene lacks",
    "scene extras that mean nothing here",
    "the bones are not where the mesh was bound at the first frame, and a skeleton exported at that frame "
    "bends the mesh; OldSkin among the node's properties takes the mesh as it stands there",
    "properties left out, because the property text has their keys already",
    "pictures that are nowhere",
    "skinned meshes that stood apart from their bones are put beside them",
    "triangles without area are left out",
    "meshes beyond what the engine holds are parted, --no-split keeps them whole",
    "meshes beyond what the engine holds that can't be parted, as they are volumes, zones, points or parts "
    "of others",
    "the properties beside the scene name nodes that it lacks",
    "pictures of kinds that aren't read are left out",
    "nodes share a mesh with a node of other materials, and may have got those; make the mesh unique",
    "several nodes have one name, and what moves, skins or lights one may go to another; give them names of "
    "their "
    "own",
};

std::string WarningLine(std::string_view heading, const std::vector<std::string>& items) {
    std::string line = std::string(heading) + ": ";
    for (std::size_t i = 0; i < std::min(items.size(), kMostItems); ++i) {
        line += (i == 0 ? "" : ", ") + items[i];
    }
    if (items.size() > kMostItems) {
        line += " and " + std::to_string(items.size() - kMostItems) + " more";
    }
    return line;
}

void AddOnce(std::vector<std::string>& items, std::string_view item) {
    if (std::ranges::find(items, item) == items.end()) {
        items.emplace_back(item);
    }
}

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

}  // namespace

void eImportReport::Problem(std::string place, std::string text) {
    ++problemCount;
    if (problems.size() < kMostProblems) {
        problems.push_back({std::move(place), std::move(text)});
    }
}

void eImportReport::Notice(eImportNotice notice, std::string_view item) {
    AddOnce(notices[static_cast<std::size_t>(notice)], item);
}

std::string eImportReport::Ansi(std::string_view utf8, std::string_view owner) {
    eFromUtf8 ansi = FromUtf8(utf8);
    const auto controls = std::ranges::count_if(ansi.text, IsControl);
    if (controls != 0 || !ansi.IsExact()) {
        std::string item = owner.empty() ? std::string() : std::string(owner) + ": ";
        item.append("\"").append(utf8).append("\"");
        std::ranges::replace_if(item, IsControl, ' ');
        AddOnce(lossyTexts, item);
    }
    std::ranges::replace_if(ansi.text, IsControl, '_');
    return std::move(ansi.text);
}

std::vector<eProblem> eImportReport::TakeProblems() {
    if (problemCount > problems.size()) {
        problems.push_back({"", std::to_string(problemCount - problems.size()) + " more problems"});
    }
    problemCount = 0;
    return std::exchange(problems, {});
}

std::vector<std::string> eImportReport::TakeWarnings() {
    std::vector<std::string> warnings;
    if (!lossyTexts.empty()) {
        warnings.push_back(
            WarningLine("characters outside code page 1251 become \"_\"", std::exchange(lossyTexts, {})));
    }
    for (std::size_t notice = 0; notice < kNotices; ++notice) {
        const std::vector<std::string> items = std::exchange(notices[notice], {});
        if (!items.empty()) {
            warnings.push_back(WarningLine(kHeadings[notice], items));
        }
    }
    return warnings;
}

}  // namespace standalone
