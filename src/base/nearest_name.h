// Names that a user may have meant by one that nobody knows.
#pragma once

#include <span>
#include <string>
#include <string_view>

// How many letters have to be changed, added, taken away or swapped with their neighbour to get from one word
// to the other. Cost: the product of the lengths.
int EditDistance(std::string_view from, std::string_view to);

// The known name nearest to the word, the first of equal ones; empty if none is so near that a slip of the
// pen explains it: a third of its letters. Case does not count.
std::string NearestName(std::string_view word, std::span<const std::string> known);
