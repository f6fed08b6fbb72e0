#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "answers/manifest.h"
#include "base/bilingual.h"

namespace answers {

// The version of the manifest's keys; rises when one is taken out or changes its meaning. They are described
// in docs/manifest.schema.json.
inline constexpr int kManifestSchema = 1;

// As JSON, UTF-8. Paths outside of the resource root, and the root itself, are told from the folder (native)
// in which the manifest lies, so that a tree with all of it can be moved; what lies on another drive keeps
// its whole path.
std::string ManifestText(const eManifest& manifest, const std::string& folder);

// Reads such a text; nothing, with the reason in `problem`, UTF-8, if it is none.
std::optional<eManifest> ReadManifest(std::string_view text, const std::string& folder, eBilingual& problem);

}  // namespace answers
