#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

#include "base/ansi.h"
#include "base/number_text.h"
#include "diff/thing.h"
#include "verify/bone_place.h"
#include "volume/polyhedron_image.h"

namespace diff {

namespace {

using written::operator-;  // of std::array, which no argument leads to
std::optional<double> NumberIn(const std::string& word) {
    double value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    return error == std::errc() && end == word.data() + word.size() ? std::optional(value) : std::nullopt;
}

bool IsAngle(const std::string& path) {
    const std::string key = path.substr(path.rfind('/') + 1);
    constexpr const char* kAngles[] = {"fov", "horizon", "angle", "angle0"};
    return std::ranges::find(kAngles, key) != std::end(kAngles);
}

bool AreAlike(const std::string& before, const std::string& after, double bound) {
    const std::optional<double> first = NumberIn(before);
    const std::optional<double> second = NumberIn(after);
    return before == after || (first && second && std::fabs(*first - *second) <= bound);
}

std::string TextOf(const eFact& fact) {
    std::string text;
    for (const std::string& word : fact.words) {
        text += (text.empty() ? "" : " ") + ToUtf8(word);
    }
    return text.empty() ? "there" : text;  // a mark says all by being there
}

// The solid of a volume, whose numbers stand in one long word.
void ComparePolyhedra(const std::string& of, const eFact& before, const eFact& after,
                      const eTolerances& tolerances, eChanges& changes) {
    std::string problem;
    const auto first = ReadPolyhedron(before.words.empty() ? "" : before.words.front(), problem);
    const auto second = ReadPolyhedron(after.words.empty() ? "" : after.words.front(), problem);
    if (!first || !second) {
        return changes.push_back(eChange::Plain(of, "broken polyhedron"));
    }
    const auto sizes = [](const ePolyhedron& solid) {
        return std::to_string(solid.vertices.size()) + " vertices, " + std::to_string(solid.sides.size()) +
               " faces";
    };
    if (sizes(*first) != sizes(*second)) {
        return changes.push_back(eChange::Value(of, "polyhedron", sizes(*first), sizes(*second)));
    }
    double farthest = 0;
    int moved = 0;
    for (std::size_t i = 0; i < first->vertices.size(); ++i) {
        const double metres =
            written::Length(written::Exact(first->vertices[i]) - written::Exact(second->vertices[i]));
        moved += metres > tolerances.metres ? 1 : 0;
        farthest = std::max(farthest, metres);
    }
    if (moved > 0) {
        changes.push_back(eChange::Amount(of, "vertices of the polyhedron moved", farthest, "m", moved));
    }
    if (first->indices != second->indices || first->sides != second->sides) {
        changes.push_back(eChange::Plain(of, "faces of the polyhedron"));
    }
}

// Facts of one path: those that both have are set aside; what is left over is told in pairs.
class eFactLists {
public:
    eFactLists(const std::string& of, const eTolerances& tolerances) : of_(of), bounds_(tolerances) {}

    void AddBefore(const eFact& fact) { before_.push_back(&fact); }
    void AddAfter(const eFact& fact) {
        const auto same =
            std::ranges::find_if(before_, [&](const eFact* old) { return SayTheSame(*old, fact, bounds_); });
        same != before_.end() ? void(before_.erase(same)) : after_.push_back(&fact);
    }

    void Tell(eChanges& changes) const {
        for (std::size_t i = 0; i < std::max(before_.size(), after_.size()); ++i) {
            const eFact* const old = i < before_.size() ? before_[i] : nullptr;
            const eFact* const now = i < after_.size() ? after_[i] : nullptr;
            const std::string path = ToUtf8((i < before_.size() ? before_[i] : after_[i])->path);
            if (old != nullptr && now != nullptr && path == "polyhedron") {
                ComparePolyhedra(of_, *old, *now, bounds_, changes);
            } else {
                changes.push_back(eChange::Value(of_, path, old != nullptr ? TextOf(*old) : "",
                                                 now != nullptr ? TextOf(*now) : ""));
            }
        }
    }

private:
    std::string of_;
    eTolerances bounds_;
    std::vector<const eFact*> before_;
    std::vector<const eFact*> after_;
};

void CompareFacts(const eThing& before, const eThing& after, const eTolerances& tolerances,
                  eChanges& changes) {
    std::vector<std::string> order;
    std::map<std::string, eFactLists> lists;
    const auto listOf = [&](const eFact& fact) -> eFactLists& {
        const auto [place, isNew] = lists.try_emplace(fact.path, before.title, tolerances);
        if (isNew) {
            order.push_back(fact.path);
        }
        return place->second;
    };
    for (const eFact& fact : before.facts) {
        listOf(fact).AddBefore(fact);
    }
    for (const eFact& fact : after.facts) {
        listOf(fact).AddAfter(fact);
    }
    for (const std::string& path : order) {
        lists.at(path).Tell(changes);
    }
}

std::string TextOf(const written::eVector& place) {
    return RealText(place[0]) + " " + RealText(place[1]) + " " + RealText(place[2]);
}

void ComparePlaces(const eThing& before, const eThing& after, const eTolerances& tolerances,
                   eChanges& changes) {
    if (!before.place || !after.place) {
        return;
    }
    const double metres = written::Length(after.place->rows[3] - before.place->rows[3]);
    if (metres > tolerances.metres) {
        changes.push_back(eChange::Amount(before.title, "moved", metres, "m"));
        changes.back().before = TextOf(before.place->rows[3]);
        changes.back().after = TextOf(after.place->rows[3]);
    }
    if (verify::IsMirrored(*before.place) != verify::IsMirrored(*after.place)) {
        return changes.push_back(eChange::Plain(before.title, "mirrored"));
    }
    const double degrees = verify::AngleBetween(*before.place, *after.place);
    if (degrees > tolerances.degrees) {
        changes.push_back(eChange::Amount(before.title, "turned", degrees, "degrees"));
    }
}

// By title, and which of those that have it.
using eIndex = std::map<std::pair<std::string, int>, const eThing*>;

eIndex IndexOf(const std::vector<eThing>& things) {
    eIndex index;
    std::map<std::string, int> counts;
    for (const eThing& thing : things) {
        index[{thing.title, counts[thing.title]++}] = &thing;
    }
    return index;
}

}  // namespace

bool SayTheSame(const eFact& before, const eFact& after, const eTolerances& tolerances) {
    const double bound = IsAngle(before.path) ? tolerances.degrees : tolerances.metres;
    return std::ranges::equal(before.words, after.words,
                              [&](const auto& a, const auto& b) { return AreAlike(a, b, bound); });
}

void CompareThings(const std::vector<eThing>& before, const std::vector<eThing>& after,
                   const eTolerances& tolerances, eChanges& changes) {
    const eIndex now = IndexOf(after);
    const eIndex old = IndexOf(before);
    for (const auto& [key, thing] : old) {
        const auto found = now.find(key);
        if (found == now.end()) {
            changes.push_back(eChange::Plain(key.first, "removed"));
            continue;
        }
        ComparePlaces(*thing, *found->second, tolerances, changes);
        CompareFacts(*thing, *found->second, tolerances, changes);
    }
    for (const auto& [key, thing] : now) {
        if (!old.contains(key)) {
            changes.push_back(eChange::Plain(key.first, "added"));
        }
    }
}

}  // namespace diff
