#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace inspect {

// What is said of a file: an object of numbers, texts, and objects and lists of them, in the order of
// telling; texts in UTF-8. It is printed as JSON as it stands, or for people by RenderText.
using eDescription = nlohmann::ordered_json;

// A length without the digits that single precision makes up: to a tenth of a millimetre.
double ShownMetres(float metres);

// For people: a line per member, objects indented below their names, lists of like objects as tables.
std::string RenderText(const eDescription& description);

}  // namespace inspect
