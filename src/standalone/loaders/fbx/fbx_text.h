// The text form of FBX: a record is a name and a colon, its values with commas between them, and its children
// in braces. "*12 { a: 1,2,3 }" is an array. A semicolon begins a comment.
#pragma once

#include "standalone/loaders/fbx/fbx_records.h"

namespace standalone {

std::optional<eFbxRecord> ReadTextFbx(std::string_view bytes);

}  // namespace standalone
