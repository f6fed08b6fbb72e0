#pragma once

#include <optional>

#include "answers/known_keys.h"
#include "answers/node_lint.h"

namespace answers {

// Why the key has no effect on the node, as it counts on others only; nothing if it has one.
std::optional<ePhrase> WithoutEffect(const eNodeLint& lint, const eKnownKey& key);

}  // namespace answers
