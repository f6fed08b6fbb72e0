#include "diff/difference.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace diff {

namespace {

using inspect::eDescription;

struct eStateWord {
    eState state;
    const char* word;  // for machines
    ePhrase text;      // of one file
    ePhrase count;
};

constexpr std::array kStateWords = {
    eStateWord{eState::Same, "same", ePhrase::FileSame, ePhrase::CountSame},
    eStateWord{eState::SameButHead, "head", ePhrase::DiffersInHead, ePhrase::CountInHead},
    eStateWord{eState::SameButComments, "comments", ePhrase::DiffersInComments, ePhrase::CountInComments},
    eStateWord{eState::SameMeaning, "equal", ePhrase::DiffersWithin, ePhrase::CountWithin},
    eStateWord{eState::Changed, "changed", ePhrase::FileChanged, ePhrase::CountChanged},
    eStateWord{eState::Added, "added", ePhrase::DiffersByComing, ePhrase::CountComing},
    eStateWord{eState::Removed, "removed", ePhrase::DiffersByGoing, ePhrase::CountGoing},
};

const eStateWord& WordOf(eState state) {
    return *std::ranges::find(kStateWords, state, &eStateWord::state);
}

double Rounded(double value) {
    return std::round(value * 1e4) / 1e4;
}

eDescription Describe(const eChange& change) {
    eDescription said{{"of", change.of.english}, {"what", change.what.english}};
    if (!change.before.IsEmpty() || !change.after.IsEmpty()) {
        said["before"] = change.before.english;
        said["after"] = change.after.english;
    }
    if (change.amount) {
        said["amount"] = Rounded(*change.amount);
        said["unit"] = change.unit;
    }
    if (change.count > 0) {
        said["count"] = change.count;
    }
    return said;
}

std::string NumberText(double value) {
    return eDescription(Rounded(value)).dump();
}

eBilingual AmountText(const eChange& change) {
    const std::string number = NumberText(*change.amount);
    return change.unit == "m"         ? Utf8Words(ePhrase::SizeMetres, number)
           : change.unit == "degrees" ? Utf8Words(ePhrase::SizeDegrees, number)
           : change.unit == "dB"      ? Utf8Words(ePhrase::SizeDecibels, number)
                                      : eBilingual{number, number};
}

// How much of what has changed, how far.
eBilingual WhatText(const eChange& change) {
    if (!change.amount) {
        return change.count > 0 ? Utf8Words(ePhrase::ChangeCounted, change.what, change.count) : change.what;
    }
    return change.count > 0 ? Utf8Words(ePhrase::ChangeUpTo, change.what, change.count, AmountText(change))
                            : Utf8Words(ePhrase::ChangeBy, change.what, AmountText(change));
}

std::string LineOf(const eChange& change, eLanguage language) {
    const std::string what = WhatText(change).In(language);
    std::string line = change.of.IsEmpty() ? what : change.of.In(language) + ": " + what;
    if (!change.before.IsEmpty() || !change.after.IsEmpty()) {
        const auto shown = [language](const eBilingual& text) {
            return text.IsEmpty() ? Say(language, ePhrase::NothingThere) : text.In(language);
        };
        line += ": " + shown(change.before) + " -> " + shown(change.after);
    }
    return line;
}

std::string TextOf(const eFileDifference& file, eLanguage language) {
    constexpr std::size_t kShown = 40;
    std::string text = file.path + ": " + Say(language, WordOf(file.state).text) + "\n";
    for (std::size_t i = 0; i < std::min(file.changes.size(), kShown); ++i) {
        text += "  " + LineOf(file.changes[i], language) + "\n";
    }
    if (file.changes.size() > kShown) {
        text += "  " + Say(language, ePhrase::MoreChanges, file.changes.size() - kShown) + "\n";
    }
    return text;
}

eDescription Summary(const eDifference& difference) {
    eDescription summary;
    for (const eStateWord& word : kStateWords) {
        summary[word.word] = difference.Count(word.state);
    }
    return summary;
}

}  // namespace

int eDifference::Count(eState state) const {
    const auto count = static_cast<int>(std::ranges::count(files, state, &eFileDifference::state));
    return state == eState::Same ? count + same : count;
}

bool eDifference::IsSame() const {
    return Count(eState::Changed) + Count(eState::Added) + Count(eState::Removed) == 0;
}

eDescription Describe(const eDifference& difference) {
    eDescription files = eDescription::array();
    for (const eFileDifference& file : difference.files) {
        eDescription changes = eDescription::array();
        std::ranges::transform(file.changes, std::back_inserter(changes),
                               [](const eChange& change) { return Describe(change); });
        files.push_back({{"path", file.path}, {"state", WordOf(file.state).word}, {"changes", changes}});
    }
    return {{"schema", kDiffSchema},
            {"old", difference.before},
            {"new", difference.after},
            {"tolerance",
             {{"metres", difference.tolerances.metres},
              {"degrees", difference.tolerances.degrees},
              {"decibels", difference.tolerances.decibels}}},
            {"same", difference.IsSame()},
            {"summary", Summary(difference)},
            {"files", std::move(files)}};
}

std::string TextOf(const eDifference& difference, eLanguage language) {
    std::string text;
    for (const eFileDifference& file : difference.files) {
        text += TextOf(file, language);
    }
    std::string counts;
    for (const eStateWord& word : kStateWords) {
        const int count = difference.Count(word.state);
        if (count > 0) {
            counts += (counts.empty() ? "" : "; ") + Say(language, word.count, count);
        }
    }
    return text + (counts.empty() ? Say(language, ePhrase::NoFiles) : counts) + "\n";
}

}  // namespace diff
