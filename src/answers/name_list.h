#pragma once

#include <string>
#include <vector>

#include "base/bilingual.h"

namespace answers {

// Names for people, UTF-8: the first few by the alphabet, each once, and how many more there are. The names
// are in code page 1251; `forEmpty` stands for an empty one.
eBilingual NameList(std::vector<std::string> names, const eBilingual& forEmpty = {});

}  // namespace answers
