// The difference of two trees of resources, as it is told.
#pragma once

#include <string>
#include <vector>

#include "diff/change.h"
#include "inspect/description.h"

namespace diff {

struct eDifference {
    std::string before;  // as the user named them
    std::string after;
    eTolerances tolerances{};
    std::vector<eFileDifference> files{};  // by path; those that are the same byte for byte are only counted
    int same = 0;

    int Count(eState state) const;
    // True if all that differs is within the tolerances.
    bool IsSame() const;
};

// The version of the keys; rises when one is taken out or changes its meaning.
inline constexpr int kDiffSchema = 1;

inspect::eDescription Describe(const eDifference& difference);
// For people: each file with its changes, the farthest first, long lists cut short; and the counts.
std::string TextOf(const eDifference& difference, eLanguage language);

}  // namespace diff
