#pragma once

#include <string>
#include <string_view>

// The safe lower-case form that every name takes in the output: double quotes become single ones, blanks,
// control characters and all bytes from 0x80 up become "_". With `strip` a suffix "_vol" and then a suffix
// "_dup" are cut off first, unless nothing else would be left.
std::string CleanNodeName(std::string_view text, bool strip);
