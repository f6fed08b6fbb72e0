#pragma once

#include <string>

class Export;

namespace host {
class INode;
}  // namespace host

// Tells a property of the node whose value the game does not get as the artist wrote it: the game's words and
// the property text have no letters beyond ASCII. `badInValue`: further characters that must not be in it.
void TellBadValue(Export& run, const host::INode& node, const char* key, const char* badInValue = "");

// The same for a property whose value is written as it stands, without quotes. False, with an error, for a
// value that must be left out: it would close the block around it, swallow what stands behind, or is no text
// that the game reads at all.
bool CheckWord(Export& run, const host::INode& node, const char* key, const std::string& value);

// Tells a property of the node whose value was read as this number but says something else: a word, a number
// with a unit, a fraction where only whole numbers count. An empty value is 0 and not told.
void TellOtherNumber(Export& run, const host::INode& node, const char* key, float readAs);

// True if the value says this number and nothing else. Both marks of a fraction count, blanks around the
// number don't.
bool SaysNumber(std::string value, float number);
