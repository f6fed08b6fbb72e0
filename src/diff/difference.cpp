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
    const char* text;
};

constexpr std::array kStateWords = {
    eStateWord{eState::Same, "same", "same"},
    eStateWord{eState::SameButHead, "head", "only the comment line with time and user"},
    eStateWord{eState::SameButComments, "comments", "only comments, as the path of the scene"},
    eStateWord{eState::SameMeaning, "equal", "equal within the tolerances"},
    eStateWord{eState::Changed, "changed", "changed"},
    eStateWord{eState::Added, "added", "added"},
    eStateWord{eState::Removed, "removed", "removed"},
};

const eStateWord& WordOf(eState state) {
    return *std::ranges::find(kStateWords, state, &eStateWord::state);
}

double Rounded(double value) {
    return std::round(value * 1e4) / 1e4;
}

eDescription Describe(const eChange& change) {
    eDescription said{{"of", change.of}, {"what", change.what}};
    if (!change.before.empty() || !change.after.empty()) {
        said["before"] = change.before;
        said["after"] = change.after;
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

std::string LineOf(const eChange& change) {
    std::string line = change.of.empty() ? change.what : change.of + ": " + change.what;
    if (change.count > 0) {
        line += ", " + std::to_string(change.count);
    }
    if (change.amount) {
        line += (change.count > 0 ? ", by up to " : " by ") + NumberText(*change.amount) +
                (change.unit.empty() ? "" : " " + change.unit);
    }
    if (!change.before.empty() || !change.after.empty()) {
        const auto shown = [](const std::string& text) { return text.empty() ? "nothing" : text; };
        line += ": " + shown(change.before) + " -> " + shown(change.after);
    }
    return line;
}

std::string TextOf(const eFileDifference& file) {
    constexpr std::size_t kShown = 40;
    std::string text = file.path + ": " + WordOf(file.state).text + "\n";
    for (std::size_t i = 0; i < std::min(file.changes.size(), kShown); ++i) {
        text += "  " + LineOf(file.changes[i]) + "\n";
    }
    if (file.changes.size() > kShown) {
        text += "  and " + std::to_string(file.changes.size() - kShown) + " more\n";
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

std::string TextOf(const eDifference& difference) {
    std::string text;
    for (const eFileDifference& file : difference.files) {
        text += TextOf(file);
    }
    std::string counts;
    for (const eStateWord& word : kStateWords) {
        const int count = difference.Count(word.state);
        if (count > 0) {
            counts += (counts.empty() ? "" : "; ") + std::to_string(count) + " " + word.text;
        }
    }
    return text + (counts.empty() ? "no files" : counts) + "\n";
}

}  // namespace diff
