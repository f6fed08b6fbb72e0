#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// What the game can't read in a value that is written as a bare word.
inline constexpr const char* kBadInWords = "{}\"";

// Tells a property of the node whose value the game does not get as the artist wrote it: the game's words and
// the property text have no letters beyond ASCII. `badInValue`: further characters that must not be in it.
void TellBadValue(Export& run, const host::INode& node, const char* key, const char* badInValue = "");

// Tells a property of the node whose value was read as this number but says something else: a word, a number
// with a unit, a fraction where only whole numbers count. An empty value is 0 and not told.
void TellOtherNumber(Export& run, const host::INode& node, const char* key, float readAs);
