#include "base/numeric_locale.h"

#include <clocale>

eNumericLocale::eNumericLocale() {
    const char* current = std::setlocale(LC_NUMERIC, nullptr);
    saved = current != nullptr ? current : "C";
    if (std::setlocale(LC_NUMERIC, "English") == nullptr) {
        std::setlocale(LC_NUMERIC, "C");
    }
}

eNumericLocale::~eNumericLocale() {
    std::setlocale(LC_NUMERIC, saved.c_str());
}
