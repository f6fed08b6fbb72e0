#include "standalone/loaders/shared/import_report.h"

#include <algorithm>
#include <utility>

#include "base/ansi.h"

namespace standalone {
namespace {

// A file that is broken throughout is told in a screenful.
constexpr std::size_t kMostProblems = 100;
constexpr std::size_t kMostItems = 20;

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

}  // namespace

void eImportReport::Problem(eLoadMessage problem) {
    ++problemCount;
    if (problems.size() < kMostProblems) {
        problems.push_back(std::move(problem));
    }
}

void eImportReport::Notice(eMessageId notice, const eBilingual& item, std::string node) {
    std::vector<eItem>& items = notices[notice];
    if (std::ranges::find(items, item, &eItem::text) == items.end()) {
        items.push_back({item, std::move(node)});
    }
}

std::string eImportReport::Ansi(std::string_view utf8, std::string_view owner) {
    eFromUtf8 ansi = FromUtf8(utf8);
    const auto controls = std::ranges::count_if(ansi.text, IsControl);
    if (controls != 0 || !ansi.IsExact()) {
        std::string item = owner.empty() ? std::string() : std::string(owner) + ": ";
        item.append("\"").append(utf8).append("\"");
        std::ranges::replace_if(item, IsControl, ' ');
        Notice(eMessageId::ImportForeignCharacters, item);
    }
    std::ranges::replace_if(ansi.text, IsControl, '_');
    return std::move(ansi.text);
}

std::vector<eLoadMessage> eImportReport::TakeProblems() {
    if (problemCount > problems.size()) {
        problems.push_back(
            MakeLoadMessage("", eMessageId::SceneMoreProblems, problemCount - problems.size()));
    }
    problemCount = 0;
    return std::exchange(problems, {});
}

std::vector<eLoadMessage> eImportReport::TakeWarnings() {
    std::vector<eLoadMessage> warnings;
    for (const auto& [notice, items] : std::exchange(notices, {})) {
        eBilingual list;
        for (std::size_t i = 0; i < std::min(items.size(), kMostItems); ++i) {
            list.AddToList(items[i].text);
        }
        if (items.size() > kMostItems) {
            list += Utf8Words(ePhrase::AndMore, items.size() - kMostItems);
        }
        warnings.push_back(MakeLoadMessage("", notice, list));
        warnings.back().node = items.size() == 1 ? items.front().node : std::string();
    }
    return warnings;
}

}  // namespace standalone
