#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "standalone/loaders/fbx/fbx_models.h"
#include "standalone/loaders/fbx/fbx_records.h"

namespace standalone {

inline constexpr double kFbxTicksPerSecond = 46186158000;

// The places of nodes and takes in eFbxModels, by the file's own numbers.
struct eFbxNumbers {
    std::unordered_map<std::int64_t, std::size_t> models;
    std::unordered_map<std::int64_t, std::size_t> takes;
};

// Sets eFbxTake::showings from the curves of visibility: of several layers of a take the first one's. A node
// is shown where its curve is at least 0.5, with straight lines between keys that don't hold their value.
void ReadFbxVisibility(const eFbxRecord& objects, const eFbxRecord& connections, const eFbxNumbers& numbers,
                       eFbxModels& file);

}  // namespace standalone
