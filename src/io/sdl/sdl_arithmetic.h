// The numbers of an arithmetic block: integers stay integers as long as both sides are.
#pragma once

#include <cstdint>
#include <string>

#include "io/sdl/sdl_parser.h"

namespace xIo::xSdl {

struct eNumber {
    bool isInteger = true;
    float real = 0;
    std::int32_t integer = 0;  // of an integer
};

eNumber NumberOf(const eToken& token);

// One of * / + -
bool IsArithmetic(char operation);
// An integer beyond 32 bits wraps around. The right side of a division is not 0.
eNumber Calculate(const eNumber& left, char operation, const eNumber& right);

std::string NumberText(const eNumber& number);

}  // namespace xIo::xSdl
