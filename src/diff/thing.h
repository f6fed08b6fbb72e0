#pragma once

#include <optional>
#include <string>
#include <vector>

#include "diff/change.h"
#include "host/values.h"
#include "inspect/sdl_tree.h"

namespace diff {

// A value of a thing: "limits", "camera/origin". Words are in code page 1251.
struct eFact {
    std::string path;
    std::vector<std::string> words;
};

// What has a name of its own in a text: a bone, a volume, a zone, the support points of a bone, a preview, a
// material; or the entity of a definition.
struct eThing {
    eBilingual title;                     // its kind and name, "bone turret"
    std::optional<host::DMatrix3> place;  // in what it hangs from, metres
    std::vector<eFact> facts;             // in the order of the text
};

// The things of a text of any kind that the export writes.
std::vector<eThing> ThingsOf(const inspect::eSdlBlock& file);

// True if both have the same words, numbers within the tolerances.
bool SayTheSame(const eFact& before, const eFact& after, const eTolerances& tolerances);

// Things of one title are compared, those of a repeated one in their order.
void CompareThings(const std::vector<eThing>& before, const std::vector<eThing>& after,
                   const eTolerances& tolerances, eChanges& changes);

}  // namespace diff
