#pragma once

#include <string>
#include <string_view>
#include <vector>

// Compares two names so that mat2 comes before mat10: below, equal to or above zero. Both are walked at one
// common position; runs of digits are compared as numbers, and equal ones are left at the end of the first
// name's run. Names with leading zeros can so be told before each other either way round (a01b, a1c).
int CompareNatural(std::string_view a, std::string_view b);

// The order of the names, as indices: that of CompareNatural wherever it says the same both ways round, else
// the order of names whose digit runs are passed each on its own. The same for every order of the input.
// Costs n log n, n^2 where names have leading zeros.
std::vector<std::size_t> NaturalOrder(const std::vector<std::string>& names);
