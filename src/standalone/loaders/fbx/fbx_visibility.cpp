#include "standalone/loaders/fbx/fbx_visibility.h"

#include <algorithm>
#include <limits>

#include "standalone/loaders/fbx/fbx_arrays.h"

namespace standalone {
namespace {

using eLinks = std::unordered_map<std::int64_t, std::int64_t>;

constexpr double kLeastShown = 0.5;
constexpr std::int64_t kHolds = 0x2, kHoldsNext = 0x100;  // among the flags of a key

struct eKey {
    double seconds = 0;
    double value = 0;
    std::int64_t flags = 0;
};

std::vector<double> NumbersIn(const eFbxRecord& record, std::string_view child) {
    const eFbxRecord* found = record.Find(child);
    return found == nullptr ? std::vector<double>() : NumbersOf(found->Array());
}

// A flag word stands for as many keys in a row as its count says.
void SetFlags(const std::vector<double>& flags, const std::vector<double>& counts, std::vector<eKey>& keys) {
    constexpr double kFlagsEnd = 4294967296;
    std::size_t key = 0;
    for (std::size_t run = 0; run < std::min(flags.size(), counts.size()); ++run) {
        const bool isWord = flags[run] >= 0 && flags[run] < kFlagsEnd;
        for (double left = counts[run]; left >= 1 && key < keys.size(); --left) {
            keys[key++].flags = isWord ? static_cast<std::int64_t>(flags[run]) : 0;
        }
    }
}

void DropKeysOutOfOrder(std::vector<eKey>& keys) {
    double last = std::numeric_limits<double>::lowest();
    std::erase_if(keys, [&](const eKey& key) {
        const bool isLater = key.seconds > last;
        last = isLater ? key.seconds : last;
        return !isLater;
    });
}

std::vector<eKey> KeysOf(const eFbxRecord& curve) {
    const std::vector<double> times = NumbersIn(curve, "KeyTime"), values = NumbersIn(curve, "KeyValueFloat");
    std::vector<eKey> keys;
    for (std::size_t key = 0; key < std::min(times.size(), values.size()); ++key) {
        keys.push_back({times[key] / kFbxTicksPerSecond, values[key]});
    }
    SetFlags(NumbersIn(curve, "KeyAttrFlags"), NumbersIn(curve, "KeyAttrRefCount"), keys);
    DropKeysOutOfOrder(keys);
    return keys;
}

void Add(std::vector<eFbxShowing>& showings, double seconds, double value) {
    const bool isShown = value >= kLeastShown;
    if (showings.empty() || showings.back().isShown != isShown) {
        showings.push_back({seconds, isShown});
    }
}

std::vector<eFbxShowing> ShowingsOf(const std::vector<eKey>& keys) {
    std::vector<eFbxShowing> showings;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const eKey& key = keys[i];
        const eKey& next = keys[std::min(i + 1, keys.size() - 1)];
        const bool holds = (key.flags & kHolds) != 0;
        Add(showings, key.seconds, holds && (key.flags & kHoldsNext) != 0 ? next.value : key.value);
        const bool crosses = (key.value >= kLeastShown) != (next.value >= kLeastShown);
        if (!holds && crosses) {
            const double share = (kLeastShown - key.value) / (next.value - key.value);
            Add(showings, key.seconds + share * (next.seconds - key.seconds), next.value);
        }
    }
    return showings;
}

// What hangs on what in the file:
//   a curve         on "d|Visibility" of a curve node
//   the curve node  on "Visibility" of a node, and on a layer, which is on a take
class eVisibilityReader {
public:
    eVisibilityReader(const eFbxRecord& objects, const eFbxRecord& connections) {
        for (const eFbxRecord& link : connections.children) {
            if (link.Text(0) == "OO") {
                above.try_emplace(link.Whole(1), link.Whole(2));
            } else if (link.Text(3) == "d|Visibility") {
                curveOf.try_emplace(link.Whole(2), link.Whole(1));
            }
        }
        for (const eFbxRecord& record : objects.children) {
            if (record.name == "AnimationCurve") {
                curves.try_emplace(record.Whole(0), &record);
            }
        }
    }

    // The changes that a curve node makes, or none.
    std::vector<eFbxShowing> Of(std::int64_t curveNode) const {
        const auto curve = curves.find(Next(curveOf, curveNode));
        return curve == curves.end() ? std::vector<eFbxShowing>() : ShowingsOf(KeysOf(*curve->second));
    }

    std::int64_t TakeOf(std::int64_t curveNode) const { return Next(above, Next(above, curveNode)); }

private:
    static std::int64_t Next(const eLinks& links, std::int64_t number) {
        const auto found = links.find(number);
        return found == links.end() ? 0 : found->second;
    }

    eLinks above;    // by what hangs: on what
    eLinks curveOf;  // by curve node
    std::unordered_map<std::int64_t, const eFbxRecord*> curves;
};

}  // namespace

void ReadFbxVisibility(const eFbxRecord& objects, const eFbxRecord& connections, const eFbxNumbers& numbers,
                       eFbxModels& file) {
    const eVisibilityReader reader(objects, connections);
    for (const eFbxRecord& link : connections.children) {
        const auto model = numbers.models.find(link.Whole(2));
        const auto take = numbers.takes.find(reader.TakeOf(link.Whole(1)));
        if (link.Text(0) != "OP" || link.Text(3) != "Visibility" || model == numbers.models.end() ||
            take == numbers.takes.end()) {
            continue;
        }
        if (std::vector<eFbxShowing> showings = reader.Of(link.Whole(1)); !showings.empty()) {
            file.takes[take->second].showings.try_emplace(model->second, std::move(showings));
        }
    }
}

}  // namespace standalone
