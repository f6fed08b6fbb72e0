#include "diff/compare_files.h"

#include <algorithm>
#include <sstream>

#include "base/ansi.h"
#include "diff/compare_clips.h"
#include "diff/compare_meshes.h"
#include "diff/compare_pictures.h"
#include "diff/thing.h"
#include "inspect/same_content.h"

namespace diff {

namespace {

enum class eKind { Text, Meshes, Clip, Picture, Report, Other };

bool EndsWithOneOf(const std::string& name, std::initializer_list<const char*> endings) {
    return std::ranges::any_of(endings, [&](const char* ending) { return name.ends_with(ending); });
}

// The words of a report of animations, which is no text that the engine reads.
eFact WordsOf(const eFile& file) {
    std::istringstream stream(std::string(file.content.begin(), file.content.end()));
    eFact words;
    for (std::string word; stream >> word;) {
        words.words.push_back(word);
    }
    return words;
}

// True if nothing but comments is another one.
bool DifferInComments(const eFile& before, const eFile& after) {
    eChanges changes;
    CompareThings(ThingsOf(before.text), ThingsOf(after.text), {.metres = 0, .degrees = 0, .decibels = 0},
                  changes);
    return before.problem.empty() && after.problem.empty() && changes.empty();
}

// By the ending, which the engine goes by, too.
eKind KindOf(const std::string& name) {
    return EndsWithOneOf(name, {".mdl", ".def", ".material"})                              ? eKind::Text
           : EndsWithOneOf(name, {".mesh"})                                                ? eKind::Meshes
           : EndsWithOneOf(name, {".anm"})                                                 ? eKind::Clip
           : EndsWithOneOf(name, {".dds", ".bmp", ".tga", ".png", ".jpg", ".psd", ".tif"}) ? eKind::Picture
           : EndsWithOneOf(name, {".txt"})                                                 ? eKind::Report
                                                                                           : eKind::Other;
}

void CompareTexts(const eFile& before, const eFile& after, const eTolerances& tolerances, eChanges& changes,
                  eBilingual& problem) {
    const std::string& broken = before.problem.empty() ? after.problem : before.problem;
    problem = {broken, broken};
    if (problem.IsEmpty()) {
        CompareThings(ThingsOf(before.text), ThingsOf(after.text), tolerances, changes);
    }
}

// Where only bytes can be told apart.
void CompareBytes(const eFile& before, const eFile& after, eChanges& changes) {
    const auto size = [](const eFile& file) { return Utf8Words(ePhrase::CountByte, file.content.size()); };
    before.content.size() == after.content.size()
        ? changes.push_back(eChange::Plain({}, ePhrase::ChangeContent))
        : changes.push_back(eChange::Value({}, Utf8Words(ePhrase::ChangeContent), size(before), size(after)));
}

void CompareByKind(const eFile& before, const eFile& after, const eTolerances& tolerances, eChanges& changes,
                   eBilingual& problem) {
    switch (KindOf(after.name)) {
        case eKind::Text:
            return CompareTexts(before, after, tolerances, changes, problem);
        case eKind::Meshes:
            return CompareMeshes(before.content, after.content, tolerances, changes, problem);
        case eKind::Clip:
            return CompareClips(before.content, after.content, tolerances, changes, problem);
        case eKind::Picture:
            return ComparePictures(before.content, after.content, tolerances, changes, problem);
        case eKind::Report:
            return SayTheSame(WordsOf(before), WordsOf(after), tolerances)
                       ? void()
                       : CompareBytes(before, after, changes);
        case eKind::Other:
            return CompareBytes(before, after, changes);
    }
}

}  // namespace

eFile ReadFile(const std::string& name, platform::eFileContent content) {
    eFile file{.name = name, .content = std::move(content), .text = {}, .problem = {}};
    if (KindOf(name) == eKind::Text) {
        file.text =
            inspect::ReadSdlTree(name, std::string(file.content.begin(), file.content.end()), file.problem);
    }
    return file;
}

eFileDifference CompareFiles(const eFile& before, const eFile& after, const eTolerances& tolerances,
                             eBilingual& problem) {
    eFileDifference difference{.path = ToUtf8(after.name), .state = eState::Same, .changes = {}};
    const inspect::eSameness sameness = inspect::CompareContent(before.content, after.content);
    if (sameness == inspect::eSameness::Same) {
        return difference;
    }
    if (KindOf(after.name) == eKind::Text &&
        (sameness == inspect::eSameness::ButForHead || DifferInComments(before, after))) {
        difference.state =
            sameness == inspect::eSameness::ButForHead ? eState::SameButHead : eState::SameButComments;
        return difference;
    }
    CompareByKind(before, after, tolerances, difference.changes, problem);
    difference.state = difference.changes.empty() ? eState::SameMeaning : eState::Changed;
    return difference;
}

}  // namespace diff
