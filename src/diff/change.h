// What is another one between two versions of a resource tree. Texts are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/bilingual.h"
#include "messages/utf8_words.h"

namespace diff {

// Up to where two values count as equal.
struct eTolerances {
    double metres = 0.001;  // of numbers that are no angles, too
    double degrees = 0.1;
    double decibels = 60;  // at least
};

struct eChange {
    eBilingual of;      // the thing in the file, "bone turret"; empty: the file as a whole
    eBilingual what;    // "moved", or the path of a value in the thing
    eBilingual before;  // empty where there was none
    eBilingual after;
    std::optional<double> amount;  // the farthest, in the unit
    std::string unit;              // "m", "degrees" or "dB"
    int count = 0;                 // of what has changed, where it is counted

    static eChange Value(eBilingual of, eBilingual what, eBilingual before, eBilingual after) {
        return {std::move(of), std::move(what), std::move(before), std::move(after), {}, {}, 0};
    }
    // Of values that are the same in both languages.
    static eChange Value(eBilingual of, ePhrase what, const std::string& before, const std::string& after) {
        return Value(std::move(of), Utf8Words(what), {before, before}, {after, after});
    }
    static eChange Amount(eBilingual of, eBilingual what, double amount, std::string unit, int count = 0) {
        return {std::move(of), std::move(what), {}, {}, amount, std::move(unit), count};
    }
    static eChange Plain(eBilingual of, ePhrase what, int count = 0) {
        return {std::move(of), Utf8Words(what), {}, {}, {}, {}, count};
    }
};

using eChanges = std::vector<eChange>;

enum class eState {
    Same,             // byte for byte
    SameButHead,      // but for the comment line with time and user
    SameButComments,  // but for that and the one with the path of the scene
    SameMeaning,      // other bytes that say the same within the tolerances
    Changed,
    Added,
    Removed,
};

struct eFileDifference {
    std::string path;
    eState state = eState::Changed;
    eChanges changes;
};

}  // namespace diff
