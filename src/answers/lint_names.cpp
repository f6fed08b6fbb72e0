#include "answers/lint_names.h"

#include <algorithm>
#include <string>
#include <vector>

#include "answers/known_keys.h"
#include "answers/look_alike.h"
#include "base/ansi.h"
#include "base/nearest_name.h"
#include "scene/properties/text_words.h"

namespace answers {
namespace {

class eNameLint {
public:
    eNameLint(eNodeLint& ownLint, const eSceneNames& ownNames) : lint(ownLint), names(ownNames) {}

    void Check(const ePropertyLine& line) {
        const eKnownKey* const known = FindKnownKey(line.key);
        const eValueForm form = known != nullptr ? known->form : eValueForm::Free;
        if (form == eValueForm::NodeName || form == eValueForm::NodeNameOrNone) {
            CheckNode(line, line.value);
        } else if (form == eValueForm::NodeNames) {
            CheckBones(line);
        } else if (form == eValueForm::Animation) {
            CheckSet(line);
        } else if (known == nullptr) {
            CheckList(line);
        }
        if (known != nullptr &&
            (known->name == "Model" || form == eValueForm::NodeName || form == eValueForm::NodeNameOrNone) &&
            MixesAlphabets(line.value)) {
            lint.Add(eMessageId::LintMixedValue, line.key, line.value, line.key, lint.node.GetName());
        }
    }

private:
    void CheckNode(const ePropertyLine& line, std::string_view name) {
        if (!name.empty() && !names.Has(name)) {
            Tell(line, name, names.Nearest(name));
        }
    }
    // What holds a structure is up to the game, so a word of its own is no slip.
    void CheckBones(const ePropertyLine& line) {
        for (const std::string_view name : WordsOf(line.value, " ")) {
            CheckNear(line, name);
        }
    }
    void CheckNear(const ePropertyLine& line, std::string_view name) {
        const std::string near = names.Has(name) ? std::string() : names.Nearest(name);
        if (!near.empty()) {
            Tell(line, name, near);
        }
    }
    // Of a property that only the game knows: a list of which some words name nodes and another nearly does.
    void CheckList(const ePropertyLine& line) {
        const std::vector<std::string_view> words = WordsOf(line.value, ", \t");
        if (std::ranges::none_of(words, [this](std::string_view word) { return names.Has(word); })) {
            return;
        }
        for (const std::string_view word : words) {
            CheckNear(line, word);
        }
    }
    // That there is no such set the run tells; here is the one that is meant.
    void CheckSet(const ePropertyLine& line) {
        std::string_view declaration = line.value;
        CutToken(declaration, ",");
        const std::string_view set = TrimBlanks(CutToken(declaration, ","));
        std::vector<std::string> sets;
        for (int i = 0; i < lint.run.host->GetNumNamedSelSets(); ++i) {
            sets.push_back(lint.run.host->GetNamedSelSetName(i));
        }
        const bool isThere =
            std::ranges::any_of(sets, [set](const std::string& name) { return EqualNoCase(name, set); });
        const std::string near = isThere ? std::string() : NearestName(set, sets);
        if (!near.empty()) {
            lint.Add(eMessageId::LintNearSet, line.key, set, lint.node.GetName(), near);
        }
    }
    void Tell(const ePropertyLine& line, std::string_view name, const std::string& near) {
        const eBilingual meant = near.empty() ? eBilingual{} : Words(ePhrase::MayBeMeant, near);
        lint.Add(eMessageId::LintUnknownNode, line.key, line.key, lint.node.GetName(), name, meant);
    }

    eNodeLint& lint;
    const eSceneNames& names;
};

}  // namespace

void LintNames(eNodeLint& lint, const eSceneNames& names) {
    if (MixesAlphabets(lint.node.GetName())) {
        lint.Add(eMessageId::LintMixedName, {}, lint.node.GetName());
    }
    eNameLint check(lint, names);
    for (const ePropertyLine& line : lint.lines) {
        check.Check(line);
    }
}

}  // namespace answers
