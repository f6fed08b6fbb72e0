// Which form of a word stands beside a number.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/bilingual.h"

// One: "1 file", "21 файл". Few: "2 файла". Many: "5 файлов", in English whatever is not one.
enum class ePluralForm { One, Few, Many };

// For a number as it is printed, by the plural rules of Unicode's CLDR. Their form for Russian fractions, the
// genitive of one ("0.5 секунды"), is spelled as that for few. What is no number counts as many.
ePluralForm PluralFormOf(std::string_view number, eLanguage language);

// Settles the words of a text that go with its values, which are told as they will be printed: of
// "{2:файл|файла|файлов}" the form for the second one. Where only two forms stand, they are those for one and
// for all others. A value that is missing counts as many.
std::string WithForms(std::string text, eLanguage language, std::span<const std::string> values);
