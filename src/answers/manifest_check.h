#pragma once

#include <string>
#include <vector>

#include "answers/manifest.h"
#include "base/bilingual.h"
#include "inspect/description.h"

namespace answers {

enum class eStanding {
    Sound,
    Missing,
    Changed,
    Stale,  // as it was written, but a source has changed since
};

struct eCheckedFile {
    std::string path;  // from the resource root
    eStanding standing = eStanding::Sound;
    eBilingual why;  // UTF-8; empty where it is sound
};

struct eManifestCheck {
    std::string manifest;             // as the user named it
    std::string root;                 // native
    std::vector<eCheckedFile> files;  // in the order of the manifest

    int Count(eStanding standing) const;
    bool IsSound() const { return Count(eStanding::Sound) == static_cast<int>(files.size()); }
};

// Reads the files that a manifest lists below its root, and its sources unless they don't count.
eManifestCheck CheckManifest(const eManifest& manifest, bool doSourcesCount);

// The version of the keys; rises when one is taken out or changes its meaning.
inline constexpr int kCheckSchema = 1;

inspect::eDescription DescribeCheck(const eManifestCheck& check);
// For people: a line for each file that is not sound, and the counts.
std::string CheckText(const eManifestCheck& check, eLanguage language);

}  // namespace answers
