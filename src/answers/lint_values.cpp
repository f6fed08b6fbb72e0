#include "answers/lint_values.h"

#include <algorithm>
#include <string>

#include "answers/known_keys.h"
#include "base/ansi.h"
#include "base/number_text.h"
#include "scene/properties/told_values.h"

namespace answers {
namespace {

// What artists write to switch a thing off.
bool IsNegation(std::string_view value) {
    constexpr std::string_view kWords[] = {"0", "false", "no", "off", "none", "нет"_ansi};
    return std::ranges::any_of(kWords, [value](std::string_view word) { return EqualNoCase(word, value); });
}

bool IsWholeNumber(std::string_view value) {
    return SaysNumber(std::string(value), static_cast<float>(ReadInteger(value)));
}

bool IsNumber(std::string_view value) {
    return SaysNumber(std::string(value), static_cast<float>(ReadReal(value)));
}

// The parts between separators, empty ones too.
template <class Check>
bool AllParts(std::string_view list, std::string_view separators, Check isGood) {
    while (true) {
        const std::size_t end = std::min(list.find_first_of(separators), list.size());
        if (!isGood(list.substr(0, end))) {
            return false;
        }
        if (end == list.size()) {
            return true;
        }
        list.remove_prefix(end + 1);
    }
}

// A blank stays in the tag.
bool AreTags(std::string_view value) {
    return AllParts(value, ",", [](std::string_view tag) {
        return !tag.empty() && tag.find_first_of(" \t") == std::string_view::npos;
    });
}

bool AreNumbers(std::string_view value) {
    return AllParts(value, ", ", [](std::string_view part) { return part.empty() || IsNumber(part); });
}

class eValueLint {
public:
    eValueLint(eNodeLint& ownLint, const ePropertyLine& ownLine, const eKnownKey& ownKey)
        : lint(ownLint), line(ownLine), key(ownKey) {}

    void Check() {
        switch (key.form) {
            case eValueForm::Mark:
                return ExpectNoNegation();
            case eValueForm::Text:
            case eValueForm::NodeName:
            case eValueForm::NodeNames:
            case eValueForm::Number:
                return ExpectValue();
            case eValueForm::Numbers:
                ExpectValue();
                return ExpectForm(AreNumbers(line.value), ePhrase::FormNumbers);
            case eValueForm::Tags:
                ExpectValue();
                return ExpectForm(AreTags(line.value), ePhrase::FormTags);
            case eValueForm::WholeNumber:
                // Of a zone the run tells it.
                return ExpectForm(lint.kind != eNodeKind::Volume || IsWholeNumber(line.value),
                                  ePhrase::FormWholeNumber);
            case eValueForm::Free:
            case eValueForm::NodeNameOrNone:
            case eValueForm::Animation:
                return;
        }
    }

private:
    void ExpectNoNegation() {
        if (IsNegation(line.value)) {
            lint.Add(eMessageId::LintMarkSwitchedOff, line.key, line.key, lint.node.GetName(), line.value);
        }
    }
    void ExpectValue() {
        if (line.value.empty()) {
            lint.Add(eMessageId::LintNoValue, line.key, line.key, lint.node.GetName());
        }
    }
    void ExpectForm(bool isGood, ePhrase form) {
        if (!line.value.empty() && !isGood) {
            lint.Add(eMessageId::LintValueForm, line.key, line.value, line.key, lint.node.GetName(),
                     Words(form));
        }
    }

    eNodeLint& lint;
    const ePropertyLine& line;
    const eKnownKey& key;
};

// What the own reader leaves of a value: it ends at a second "=", and letters beyond ASCII vanish.
std::string OwnReading(std::string_view value) {
    std::string read(value.substr(0, value.find('=')));
    std::erase_if(read, [](char byte) { return static_cast<signed char>(byte) < ' '; });
    return read;
}

// Parameters of a bone, and the few known keys whose text the game gets and of which the run does not tell.
void CheckReading(eNodeLint& lint, const ePropertyLine& line, const eKnownKey* known) {
    const bool isParameter =
        known == nullptr && lint.kind == eNodeKind::Ordinary && !OwnReading(line.key).empty();
    const bool isText =
        known != nullptr && (known->form == eValueForm::Animation || known->form == eValueForm::NodeNames);
    const std::string read = OwnReading(line.value);
    if ((isParameter || isText) && read != line.value) {
        lint.Add(eMessageId::LintCutValue, line.key, line.value, line.key, lint.node.GetName(), read);
    }
}

// The lower limit above the upper one.
void CheckLimits(eNodeLint& lint) {
    std::string least;
    std::string most;
    if (lint.node.GetUserPropString("IKMin", least) && lint.node.GetUserPropString("IKMax", most) &&
        IsNumber(least) && IsNumber(most)) {
        std::ranges::replace(least, ',', '.');
        std::ranges::replace(most, ',', '.');
        if (ReadReal(least) > ReadReal(most)) {
            lint.Add(eMessageId::LintSwappedLimits, "IKMin", least, most, lint.node.GetName());
        }
    }
}

}  // namespace

void LintValues(eNodeLint& lint) {
    for (const ePropertyLine& line : lint.lines) {
        const eKnownKey* const known = FindKnownKey(line.key);
        if (known != nullptr) {
            eValueLint(lint, line, *known).Check();
        }
        CheckReading(lint, line, known);
    }
    CheckLimits(lint);
}

}  // namespace answers
