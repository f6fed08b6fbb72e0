#pragma once

#include <string>
#include <string_view>

namespace host {
class INode;
}  // namespace host

// The safe lower-case form that every name takes in the output: double quotes become single ones, blanks,
// control characters and all bytes from 0x80 up become "_". With `strip` a suffix "_vol" and then a suffix
// "_dup" are cut off first, unless nothing else would be left.
std::string CleanNodeName(std::string_view text, bool strip);

// The level of detail that a node's name tells: the number behind the first "_lod", 0 without one.
int GetLodLevel(const host::INode& node);
// The same for a name that is cleaned already, with the suffixes cut off.
int LodLevelOfName(std::string_view cleanedName);
