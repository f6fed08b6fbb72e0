// Where in the scene a message belongs. Code page 1251; what does not apply is empty.
#pragma once

#include <string>

struct eMessagePlace {
    std::string node = {};  // names from the topmost node down, with slashes between
    std::string property = {};
    std::string animation = {};
    std::string material = {};
    std::string map = {};
    std::string file = {};
};
