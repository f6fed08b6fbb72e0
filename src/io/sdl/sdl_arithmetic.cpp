#include "io/sdl/sdl_arithmetic.h"

#include <string_view>

#include "base/number_text.h"

namespace xIo::xSdl {
namespace {

template <class T>
T Result(T left, char operation, T right) {
    switch (operation) {
        case '*':
            return left * right;
        case '/':
            return left / right;
        case '+':
            return left + right;
        default:
            return left - right;
    }
}

}  // namespace

eNumber NumberOf(const eToken& token) {
    return {token.type == kTokenInteger, token.real, token.integer};
}

bool IsArithmetic(char operation) {
    return operation != '\0' && std::string_view("*/+-").find(operation) != std::string_view::npos;
}

eNumber Calculate(const eNumber& left, char operation, const eNumber& right) {
    if (!left.isInteger || !right.isInteger) {
        return {false, Result(left.real, operation, right.real), 0};
    }
    const auto wide = Result<std::int64_t>(left.integer, operation, right.integer);
    const auto wrapped = static_cast<std::int32_t>(static_cast<std::uint32_t>(wide));
    return {true, static_cast<float>(wrapped), wrapped};
}

std::string NumberText(const eNumber& number) {
    return number.isInteger ? IntegerText(number.integer) : RealText(number.real);
}

}  // namespace xIo::xSdl
