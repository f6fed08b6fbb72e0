#include "answers/file_reason.h"

#include <algorithm>
#include <optional>

#include "answers/file_nodes.h"
#include "answers/name_list.h"
#include "messages/utf8_words.h"

namespace answers {

namespace {

struct eRuleText {
    eFileRule rule;
    const char* word;
    std::optional<ePhrase> picture = {};  // what it says of a picture, if it is one of pictures
};

constexpr eRuleText kRuleTexts[] = {
    {eFileRule::EveryRun, "every-run"},
    {eFileRule::FirstRunOnly, "first-run-only"},
    {eFileRule::IsThere, "is-there"},
    {eFileRule::NoAnimations, "no-animations"},
    {eFileRule::TargetMissing, "target-missing", ePhrase::TargetMissing},
    {eFileRule::TargetEmpty, "target-empty", ePhrase::TargetEmpty},
    {eFileRule::SourceNewer, "source-newer", ePhrase::SourceNewer},
    {eFileRule::UpToDate, "up-to-date", ePhrase::SourceNotNewer},
    {eFileRule::PlainColor, "plain-colour", ePhrase::PlainColor},
    {eFileRule::Procedural, "procedural", ePhrase::Procedural},
    {eFileRule::SourceMissing, "source-missing", ePhrase::SourceMissing},
    {eFileRule::SourceBroken, "source-broken", ePhrase::SourceBroken},
};

const eRuleText& TextOf(eFileRule rule) {
    return *std::ranges::find(kRuleTexts, rule, &eRuleText::rule);
}

eBilingual SkeletonText(const eRunJournal& journal, const host::INode* model) {
    const auto count = [&](auto isMeant) {
        return std::ranges::count_if(journal.nodes, [&](const auto& entry) {
            const eNodeNote& note = entry.second;
            return note.leftOut == eLeftOut::No && note.model == model && isMeant(note);
        });
    };
    eBilingual text = Utf8Words(ePhrase::CountBone, count([](const eNodeNote& note) { return note.isBone; }));
    const auto add = [&](eNodeKind kind, ePhrase things) {
        const auto found = count([kind](const eNodeNote& note) { return note.kind == kind; });
        if (found > 0) {
            text.AddToList(Utf8Words(things, found));
        }
    };
    add(eNodeKind::Volume, ePhrase::CountVolume);
    add(eNodeKind::Zone, ePhrase::CountZone);
    add(eNodeKind::SupportPoint, ePhrase::CountSupportPoint);
    add(eNodeKind::Preview, ePhrase::CountPreviewGroup);
    return text;
}

eBilingual MaterialList(const eFileNote& file) {
    return NameList(file.materials, Utf8Words(ePhrase::NoMaterial));
}

eBilingual PictureText(const eFileNote& file, ePhrase rule) {
    const std::string source = file.source.empty() ? "" : " (" + ToUtf8(file.source) + ")";
    return Utf8Words(ePhrase::ReasonTexture, MaterialList(file), Utf8Words(rule), source);
}

}  // namespace

eBilingual ReasonOf(const eRunJournal& journal, const eName& path, const eFileNote& file) {
    const std::string model = ToUtf8(file.models.front()->GetName());
    const std::string extension = path.Part(eName::Extension).Text();
    if (const std::optional<ePhrase> picture = TextOf(file.rule).picture) {
        return PictureText(file, *picture);
    }
    if (!file.animation.empty()) {
        return Utf8Words(ePhrase::ReasonAnimation, ToUtf8(file.animation), model,
                         Utf8Words(ePhrase::CountNode, NodesOf(journal, path, file).size()));
    }
    if (!file.meshes.empty()) {
        return Utf8Words(ePhrase::ReasonMeshes, NameList(file.meshes));
    }
    if (!file.materials.empty()) {
        return Utf8Words(ePhrase::ReasonMaterials, MaterialList(file));
    }
    if (extension == ".txt") {
        const bool hasNone = file.rule == eFileRule::NoAnimations;
        return Utf8Words(hasNone ? ePhrase::ReasonNoAnimations : ePhrase::ReasonAnimations, model);
    }
    if (extension == ".def") {
        const bool isThere = file.rule == eFileRule::IsThere;
        return Utf8Words(isThere ? ePhrase::ReasonEntityKept : ePhrase::ReasonEntity, model);
    }
    return Utf8Words(ePhrase::ReasonSkeleton, model, SkeletonText(journal, file.models.front()));
}

const char* RuleWord(eFileRule rule) {
    return TextOf(rule).word;
}

}  // namespace answers
