#include "messages/stage_title.h"

#include <string_view>

#include "messages/phrase.h"

namespace {

constexpr ePhrase kStages[] = {ePhrase::StageSkeleton, ePhrase::StageMesh, ePhrase::StageTriangles,
                               ePhrase::StageTextures};

std::string_view Head(std::string_view pattern) {
    return pattern.substr(0, pattern.find('%'));
}

}  // namespace

// Values stand at the end of a title, in the same form in both languages.
std::string EnglishStage(const std::string& russian) {
    for (const ePhrase stage : kStages) {
        const ePhraseRow& row = RowOf(stage);
        if (const std::string_view head = Head(row.russian); russian.starts_with(head)) {
            return std::string(Head(row.english)) + russian.substr(head.size());
        }
    }
    return russian;
}
