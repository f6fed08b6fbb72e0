#include "answers/animations.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "answers/labelled.h"
#include "answers/name_list.h"
#include "base/ansi.h"
#include "host/node_path.h"
#include "messages/utf8_words.h"
#include "platform/path_lookup.h"

namespace answers {
namespace {

using inspect::eDescription;

// The frames that two animations have in common.
struct eOverlap {
    std::string with;
    int firstFrame;
    int lastFrame;
};

bool SharesBone(const eAnimationNote& one, const eAnimationNote& other) {
    return std::ranges::find_first_of(one.bones, other.bones) != one.bones.end();
}

std::vector<eOverlap> OverlapsOf(const eRunJournal& journal, const eAnimationNote& animation) {
    std::vector<eOverlap> overlaps;
    for (const eAnimationNote& other : journal.animations) {
        const int first = std::max(animation.firstFrame, other.firstFrame);
        const int last = std::min(animation.lastFrame, other.lastFrame);
        if (&other != &animation && other.model == animation.model && first <= last &&
            SharesBone(animation, other)) {
            overlaps.push_back({ToUtf8(other.name), first, last});
        }
    }
    return overlaps;
}

std::string Frames(int first, int last) {
    return first == last ? std::to_string(first) : std::to_string(first) + "-" + std::to_string(last);
}

eDescription List(const std::vector<std::string>& names) {
    eDescription list = eDescription::array();
    std::ranges::transform(names, std::back_inserter(list), ToUtf8);
    return list;
}

eDescription Describe(const eRunJournal& journal, const eAnimationNote& animation) {
    eDescription overlaps = eDescription::array();
    for (const eOverlap& overlap : OverlapsOf(journal, animation)) {
        overlaps.push_back(
            {{"with", overlap.with}, {"first", overlap.firstFrame}, {"last", overlap.lastFrame}});
    }
    const std::string file =
        animation.file.IsEmpty() ? std::string() : platform::DiskPath(animation.file.Text());
    return {{"model", ToUtf8(host::PathOf(*animation.model))},
            {"name", ToUtf8(animation.name)},
            {"set", ToUtf8(animation.selectionSet)},
            {"first", animation.firstFrame},
            {"last", animation.lastFrame},
            {"file", file},
            {"bones", List(animation.bones)},
            {"moving", List(animation.movingBones)},
            {"overlaps", std::move(overlaps)}};
}

std::string MovingText(const eAnimationNote& animation, eLanguage language) {
    const std::string names =
        animation.movingBones.empty() ? "" : ": " + NameList(animation.movingBones).In(language);
    return Say(language, ePhrase::CountOf, animation.movingBones.size(), animation.bones.size()) + names;
}

eDescription Row(const eRunJournal& journal, const eAnimationNote& animation, eLanguage language) {
    std::string overlaps;
    for (const eOverlap& overlap : OverlapsOf(journal, animation)) {
        overlaps += (overlaps.empty() ? "" : ", ") + Say(language, ePhrase::OverlapAt, overlap.with,
                                                         Frames(overlap.firstFrame, overlap.lastFrame));
    }
    const auto orNone = [](const std::string& text) {
        return text.empty() ? eDescription() : eDescription(text);
    };
    return {{"animation", ToUtf8(animation.name)},
            {"set", orNone(ToUtf8(animation.selectionSet))},
            {"frames", Frames(animation.firstFrame, animation.lastFrame)},
            {"file", orNone(ToUtf8(animation.file.Part(eName::FileName).Text()))},
            {"moving", MovingText(animation, language)},
            {"overlaps", orNone(overlaps)}};
}

}  // namespace

eDescription DescribeAnimations(const eRunJournal& journal) {
    eDescription list = eDescription::array();
    for (const eAnimationNote& animation : journal.animations) {
        list.push_back(Describe(journal, animation));
    }
    return list;
}

std::string AnimationText(const eRunJournal& journal, eLanguage language) {
    eDescription models = eDescription::object();
    for (const eAnimationNote& animation : journal.animations) {
        const std::string model = ToUtf8(host::PathOf(*animation.model));
        models[Say(language, ePhrase::HeadAnimationsOf, model)].push_back(Row(journal, animation, language));
    }
    return models.empty() ? std::string() : inspect::RenderText(Labelled(models, language));
}

}  // namespace answers
