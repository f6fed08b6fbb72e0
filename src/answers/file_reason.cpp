#include "answers/file_reason.h"

#include <algorithm>
#include <vector>

#include "answers/file_nodes.h"
#include "answers/name_list.h"
#include "base/ansi.h"

namespace answers {

namespace {

struct eRuleText {
    eFileRule rule;
    const char* word;
    const char* picture;  // what it says of a picture; null where it is none of a picture
};

constexpr eRuleText kRuleTexts[] = {
    {eFileRule::EveryRun, "every-run", nullptr},
    {eFileRule::FirstRunOnly, "first-run-only", nullptr},
    {eFileRule::IsThere, "is-there", nullptr},
    {eFileRule::NoAnimations, "no-animations", nullptr},
    {eFileRule::TargetMissing, "target-missing", "there is no file yet"},
    {eFileRule::TargetEmpty, "target-empty", "the file is empty"},
    {eFileRule::SourceNewer, "source-newer", "the picture is newer than the file"},
    {eFileRule::UpToDate, "up-to-date", "the picture is not newer than the file"},
    {eFileRule::PlainColor, "plain-colour", "the plain colour, written in every run"},
    {eFileRule::Procedural, "procedural", "a map without a file, written in every run"},
    {eFileRule::SourceMissing, "source-missing", "the picture is missing"},
    {eFileRule::SourceBroken, "source-broken", "the picture can't be read"},
};

const eRuleText& TextOf(eFileRule rule) {
    return *std::ranges::find(kRuleTexts, rule, &eRuleText::rule);
}

std::string Counted(std::ptrdiff_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string SkeletonText(const eRunJournal& journal, const host::INode* model) {
    const auto count = [&](auto isMeant) {
        return std::ranges::count_if(journal.nodes, [&](const auto& entry) {
            const eNodeNote& note = entry.second;
            return note.leftOut == eLeftOut::No && note.model == model && isMeant(note);
        });
    };
    std::string text = Counted(count([](const eNodeNote& note) { return note.isBone; }), "bone");
    const auto add = [&](eNodeKind kind, const char* what) {
        const auto found = count([kind](const eNodeNote& note) { return note.kind == kind; });
        text += found > 0 ? ", " + Counted(found, what) : "";
    };
    add(eNodeKind::Volume, "volume");
    add(eNodeKind::Zone, "zone");
    add(eNodeKind::SupportPoint, "support point");
    add(eNodeKind::Preview, "preview group");
    return text;
}

std::string PictureText(const eFileNote& file) {
    const std::string source = file.source.empty() ? "" : " (" + ToUtf8(file.source) + ")";
    return "texture of " + NameList(file.materials, "no material") + ": " + TextOf(file.rule).picture +
           source;
}

}  // namespace

std::string ReasonOf(const eRunJournal& journal, const eName& path, const eFileNote& file) {
    const std::string model = ToUtf8(file.models.front()->GetName());
    const std::string extension = path.Part(eName::Extension).Text();
    if (TextOf(file.rule).picture != nullptr) {
        return PictureText(file);
    }
    if (!file.animation.empty()) {
        const auto nodes = static_cast<std::ptrdiff_t>(NodesOf(journal, path, file).size());
        return "animation " + ToUtf8(file.animation) + " of " + model + ": " + Counted(nodes, "node");
    }
    if (!file.meshes.empty()) {
        return "meshes of " + NameList(file.meshes);
    }
    if (!file.materials.empty()) {
        return "materials " + NameList(file.materials, "no material");
    }
    if (extension == ".txt") {
        return file.rule == eFileRule::NoAnimations ? model + " has no animations" : "animations of " + model;
    }
    if (extension == ".def") {
        return "entity of " + model + ": " +
               (file.rule == eFileRule::IsThere ? "is there, so it stays as it is"
                                                : "written once, then kept");
    }
    return "skeleton of " + model + ": " + SkeletonText(journal, file.models.front());
}

const char* RuleWord(eFileRule rule) {
    return TextOf(rule).word;
}

}  // namespace answers
