#include "base/plural_form.h"

#include <algorithm>

namespace {

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789.") == std::string_view::npos &&
           text.back() != '.';
}

// https://www.unicode.org/cldr/charts/latest/supplemental/language_plural_rules.html
ePluralForm RussianForm(std::string_view number) {
    if (number.find('.') != std::string_view::npos) {
        return ePluralForm::Few;
    }
    const char last = number.back();
    const bool isTeen = number.size() > 1 && number[number.size() - 2] == '1';
    return isTeen || last == '0' || last > '4' ? ePluralForm::Many
           : last == '1'                       ? ePluralForm::One
                                               : ePluralForm::Few;
}

// "файл|файла|файлов".
std::string_view Choose(std::string_view forms, ePluralForm form) {
    for (int passed = 0; passed < static_cast<int>(form); ++passed) {
        const std::size_t bar = forms.find('|');
        forms.remove_prefix(bar == std::string_view::npos ? 0 : bar + 1);
    }
    return forms.substr(0, forms.find('|'));
}

}  // namespace

ePluralForm PluralFormOf(std::string_view number, eLanguage language) {
    if (!IsNumber(number)) {
        return ePluralForm::Many;
    }
    return language == eLanguage::Russian ? RussianForm(number)
           : number == "1"                ? ePluralForm::One
                                          : ePluralForm::Many;
}

std::string WithForms(std::string text, eLanguage language, std::span<const std::string> values) {
    for (std::size_t begin = text.find('{'); begin != std::string::npos; begin = text.find('{', begin + 1)) {
        const std::size_t end = text.find('}', begin);
        const bool isChoice = end != std::string::npos && end - begin > 3 && text[begin + 2] == ':' &&
                              text[begin + 1] >= '1' && text[begin + 1] <= '9';
        if (isChoice) {
            const auto value = static_cast<std::size_t>(text[begin + 1] - '1');
            const std::string number = value < values.size() ? values[value] : std::string();
            const std::string_view forms = std::string_view(text).substr(begin + 3, end - begin - 3);
            const std::string form(Choose(forms, PluralFormOf(number, language)));
            text.replace(begin, end + 1 - begin, form);
        }
    }
    return text;
}
