#include "scene/properties/prop_text.h"

#include <algorithm>
#include <cstring>

#include "base/ansi.h"

void ePropText::Bind(const std::string& walked) {
    text = &walked;
    StandAt(text->data());
}

int ePropText::Count() const {
    if (text->empty()) {
        return 0;
    }
    return 1 + static_cast<int>(std::count(text->begin(), text->end() - 1, pairSeparator));
}

bool ePropText::Seek(int index) {
    StandAt(text->data());
    for (; index > 0; --index) {
        if (!Next()) {
            return false;
        }
    }
    return true;
}

bool ePropText::Next() {
    StandAt(PairBehind(keyBegin));
    return keyBegin != End();
}

bool ePropText::Find(std::string_view key) {
    const char* pair = text->data();
    while (pair != End() && !HasKey(pair, key)) {
        pair = PairBehind(pair);
    }
    StandAt(pair);
    return pair != End();
}

const char* ePropText::PairBehind(const char* pair) const {
    const auto left = static_cast<std::size_t>(End() - pair);
    const void* separator = std::memchr(pair, pairSeparator, left);
    return separator != nullptr ? static_cast<const char*>(separator) + 1 : End();
}

void ePropText::StandAt(const char* pair) {
    keyBegin = pair;
    const char* stop = std::find_first_of(pair, End(), std::begin(stopSet), std::end(stopSet));
    valueBegin = stop != End() && *stop == keySeparator ? stop + 1 : End();
}

std::string_view ePropText::UpToStop(const char* begin) const {
    return {begin, std::find_first_of(begin, End(), std::begin(stopSet), std::end(stopSet))};
}

bool ePropText::HasKey(const char* pair, std::string_view key) const {
    const auto left = static_cast<std::size_t>(End() - pair);
    if (left < key.size() || LowerAsciiByte(pair[0]) != LowerAsciiByte(key[0]) ||
        !EqualNoAsciiCase({pair, key.size()}, key)) {
        return false;
    }
    const char* next = pair + key.size();
    return next == End() || *next == pairSeparator || *next == keySeparator;
}
