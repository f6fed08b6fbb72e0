#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "standalone/loaders/fbx/fbx_models.h"

namespace standalone {

// The import library tells nodes apart by their names alone: of nodes that share one it mixes up motions,
// bones and lights. This gives the library's copy of the file names that no two nodes share, as long as the
// file's own so that all else stays where it is, and notes them in eFbxModel::libraryName. Names too short
// for so many nodes stay shared. Nothing where all names differ already. `bytes` are those that the models
// were read from.
std::optional<std::string> WithOwnFbxNames(std::string_view bytes, eFbxModels& file);

}  // namespace standalone
