#pragma once

#include <optional>
#include <string>

#include "io/name.h"
#include "platform/file_layer.h"

namespace written {

// The whole file of a resource path, through the layer of files in use. Nothing if it can't be read.
std::optional<platform::eFileContent> ReadWritten(const eName& path);

// What a name in a model's files leads to, from the model's folder.
struct ePlacedName {
    eName folder;
    std::string name;
};
ePlacedName Resolve(const eName& folder, const std::string& reference);

}  // namespace written
