// What user-defined properties say of a node, in whichever format they come.
#pragma once

#include <string>
#include <string_view>

#include "standalone/loaders/shared/import_report.h"
#include "standalone/scene_data.h"

namespace standalone {

// The member that is a whole property text.
inline constexpr std::string_view kWholeTextKey = "properties";

// `key=value`, or the key alone where the value is empty, in code page 1251. A line per property: a break
// inside a value would begin another one. Both are UTF-8; what the page lacks is told with the owner, a node,
// UTF-8.
std::string PropertyLineOf(std::string_view key, std::string_view value, const std::string& owner,
                           eImportReport& report);

// A whole property text in code page 1251, whose lines end in CR LF in the host: one of its readers does not
// know a bare LF. What the page lacks is told line by line, as above.
std::string PropertyTextOf(std::string_view utf8, const std::string& owner, eImportReport& report);

// The primitive that a node's mesh stands for.
enum class eShapeWord { None, Box, Sphere, Cylinder };

// None for any other word.
eShapeWord ShapeOfWord(std::string_view word);

// Makes the node a "head" or a "member" of a group; false for another word.
bool ReadGroupWord(std::string_view word, eNodeData& record);

}  // namespace standalone
