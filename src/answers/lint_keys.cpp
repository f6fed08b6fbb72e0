#include "answers/lint_keys.h"

#include <algorithm>
#include <string>

#include "answers/key_effect.h"
#include "answers/known_keys.h"
#include "answers/look_alike.h"
#include "base/ansi.h"
#include "base/nearest_name.h"
#include "scene/properties/node_properties.h"

namespace answers {
namespace {

// Short keys resemble too many others. A colon or a blank in place of the "=" leaves the value in the key.
std::string LikelyKey(const ePropertyLine& line) {
    constexpr std::size_t kShortest = 3;
    const std::string_view key = line.key;
    const std::size_t end = key.find_first_of(line.hasValueSign ? ":" : ": \t");
    if (const eKnownKey* known = FindKnownKey(key.substr(0, end))) {
        return known->name;
    }
    return key.size() < kShortest ? std::string() : NearestName(key, KnownKeyNames());
}

bool IsFound(const host::INode& node, const eKnownKey& known) {
    const bool isHosts = host::HasUserPropString(node, known.name.c_str());
    const bool isOwn = HasUserProp(node, known.name);
    switch (known.reader) {
        case eKeyReader::Own:
            return isOwn;
        case eKeyReader::Host:
            return isHosts;
        case eKeyReader::Trimmed:
            break;
    }
    return isOwn || isHosts;
}

// The text as the game gets it: letters beyond ASCII vanish.
std::string InAscii(std::string_view text) {
    std::string ascii(text);
    std::erase_if(ascii, [](char byte) { return static_cast<signed char>(byte) < ' '; });
    return ascii;
}

// A mark inside a key is a slip; names of parameters are words.
bool HasMark(std::string_view key) {
    return key.find_first_of(":\"'{}()[]<>/\\|,*?!@#$%^&+~`") != std::string_view::npos;
}

// All that no one knows goes to the game as a parameter of the bone. That is what such keys are for, so only
// one that can't be meant is told. A key without a Latin letter is a note of the artist: nothing of it leaves
// the scene.
void CheckParameter(eNodeLint& lint, const ePropertyLine& line) {
    const std::string key = InAscii(line.key);
    if (lint.kind != eNodeKind::Ordinary || key.find_first_not_of(" \t") == std::string::npos) {
        return;
    }
    if (key != line.key) {
        lint.Add(eMessageId::LintCutKey, line.key, line.key, lint.node.GetName(), key);
    } else if (HasMark(key)) {
        lint.Add(eMessageId::LintOddKey, line.key, line.key, lint.node.GetName());
    }
    if (line.hasValueSign && line.value.empty()) {
        lint.Add(eMessageId::LintEmptyValue, line.key, line.key, lint.node.GetName());
    }
}

void CheckUnknown(eNodeLint& lint, const ePropertyLine& line) {
    if (const std::string folded = InLatin(line.key); folded != line.key && FindKnownKey(folded) != nullptr) {
        lint.Add(eMessageId::LintMixedKey, line.key, line.key, lint.node.GetName(), folded);
    } else if (const std::string likely = LikelyKey(line); !likely.empty()) {
        lint.Add(eMessageId::LintNearKey, line.key, line.key, lint.node.GetName(), likely);
    } else {
        CheckParameter(lint, line);
    }
}

// Animations and what a structure holds may be told several times; of all else the first counts.
bool IsRepeated(const eNodeLint& lint, const ePropertyLine& line, const eKnownKey& known) {
    const auto isEarlier = [&](const ePropertyLine& other) {
        return &other < &line && EqualNoAsciiCase(other.key, line.key) && other.value != line.value;
    };
    return known.reader != eKeyReader::Trimmed && std::ranges::any_of(lint.lines, isEarlier);
}

void CheckKnown(eNodeLint& lint, const ePropertyLine& line, const eKnownKey& known) {
    const std::string& name = lint.node.GetName();
    if (!IsFound(lint.node, known)) {
        lint.Add(eMessageId::LintUnreadKey, line.key, line.key, name);
    } else if (const std::optional<ePhrase> idle = WithoutEffect(lint, known)) {
        lint.Add(eMessageId::LintNoEffect, line.key, line.key, name, Words(*idle));
    }
    if (IsRepeated(lint, line, known)) {
        lint.Add(eMessageId::LintRepeatedKey, line.key, line.key, name, line.value);
    }
}

}  // namespace

void LintKeys(eNodeLint& lint) {
    for (const ePropertyLine& line : lint.lines) {
        if (const eKnownKey* known = FindKnownKey(line.key)) {
            CheckKnown(lint, line, *known);
        } else if (!line.key.empty()) {
            CheckUnknown(lint, line);
        }
    }
}

}  // namespace answers
