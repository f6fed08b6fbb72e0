#pragma once

#include <string>
#include <unordered_set>

#include "base/ansi.h"

namespace standalone {

// Names in code page 1251 that must differ in more than letter case: the wanted one, or with the ending "_2",
// "_3" where it is taken.
class eUniqueNames {
public:
    std::string Take(const std::string& wanted) {
        std::string name = wanted;
        for (int number = 2; !taken.insert(LowerAnsi(name)).second; ++number) {
            name = wanted + "_" + std::to_string(number);
        }
        return name;
    }

private:
    std::unordered_set<std::string> taken;  // lower case
};

}  // namespace standalone
