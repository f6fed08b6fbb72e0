#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

#include "base/ansi.h"
#include "base/number_text.h"
#include "diff/thing.h"
#include "messages/phrase_match.h"
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

eBilingual TextOf(const eFact* fact) {
    if (fact == nullptr) {
        return {};
    }
    std::string text;
    for (const std::string& word : fact->words) {
        text += (text.empty() ? "" : " ") + ToUtf8(word);
    }
    // A mark says all by being there.
    return text.empty() ? Utf8Words(ePhrase::MarkThere) : eBilingual{text, text};
}

// The path of a value; those that no file has are words of ours.
eBilingual TitleOf(const std::string& path) {
    constexpr ePhrase kOwn[] = {ePhrase::ChangeHangsFrom, ePhrase::ChangeJoint, ePhrase::ChangeKind};
    return ByPhrase(path, kOwn);
}

// The solid of a volume, whose numbers stand in one long word.
void ComparePolyhedra(const eBilingual& of, const eFact& before, const eFact& after,
                      const eTolerances& tolerances, eChanges& changes) {
    std::string problem;
    const auto first = ReadPolyhedron(before.words.empty() ? "" : before.words.front(), problem);
    const auto second = ReadPolyhedron(after.words.empty() ? "" : after.words.front(), problem);
    if (!first || !second) {
        return changes.push_back(eChange::Plain(of, ePhrase::ChangeBrokenSolid));
    }
    const auto sizes = [](const ePolyhedron& solid) {
        eBilingual text = Utf8Words(ePhrase::CountVertex, solid.vertices.size());
        text.AddToList(Utf8Words(ePhrase::CountFace, solid.sides.size()));
        return text;
    };
    if (sizes(*first) != sizes(*second)) {
        return changes.push_back(
            eChange::Value(of, Utf8Words(ePhrase::ChangeSolid), sizes(*first), sizes(*second)));
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
        changes.push_back(eChange::Amount(of, Utf8Words(ePhrase::ChangeSolidVertices), farthest, "m", moved));
    }
    if (first->indices != second->indices || first->sides != second->sides) {
        changes.push_back(eChange::Plain(of, ePhrase::ChangeSolidFaces));
    }
}

// Facts of one path: those that both have are set aside; what is left over is told in pairs.
class eFactLists {
public:
    eFactLists(const eBilingual& of, const eTolerances& tolerances) : of_(of), bounds_(tolerances) {}

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
                changes.push_back(eChange::Value(of_, TitleOf(path), TextOf(old), TextOf(now)));
            }
        }
    }

private:
    eBilingual of_;
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

eBilingual TextOf(const written::eVector& place) {
    const std::string text = RealText(place[0]) + " " + RealText(place[1]) + " " + RealText(place[2]);
    return {text, text};
}

void ComparePlaces(const eThing& before, const eThing& after, const eTolerances& tolerances,
                   eChanges& changes) {
    if (!before.place || !after.place) {
        return;
    }
    const double metres = written::Length(after.place->rows[3] - before.place->rows[3]);
    if (metres > tolerances.metres) {
        changes.push_back(eChange::Amount(before.title, Utf8Words(ePhrase::ChangeMoved), metres, "m"));
        changes.back().before = TextOf(before.place->rows[3]);
        changes.back().after = TextOf(after.place->rows[3]);
    }
    if (verify::IsMirrored(*before.place) != verify::IsMirrored(*after.place)) {
        return changes.push_back(eChange::Plain(before.title, ePhrase::ChangeMirrored));
    }
    const double degrees = verify::AngleBetween(*before.place, *after.place);
    if (degrees > tolerances.degrees) {
        changes.push_back(
            eChange::Amount(before.title, Utf8Words(ePhrase::ChangeTurned), degrees, "degrees"));
    }
}

// By title, and which of those that have it.
using eIndex = std::map<std::pair<std::string, int>, const eThing*>;

eIndex IndexOf(const std::vector<eThing>& things) {
    eIndex index;
    std::map<std::string, int> counts;
    for (const eThing& thing : things) {
        index[{thing.title.english, counts[thing.title.english]++}] = &thing;
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
            changes.push_back(eChange::Plain(thing->title, ePhrase::ChangeRemoved));
            continue;
        }
        ComparePlaces(*thing, *found->second, tolerances, changes);
        CompareFacts(*thing, *found->second, tolerances, changes);
    }
    for (const auto& [key, thing] : now) {
        if (!old.contains(key)) {
            changes.push_back(eChange::Plain(thing->title, ePhrase::ChangeAdded));
        }
    }
}

}  // namespace diff
