// Texts of a library that speaks one language, told in the other by the row that has their words.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "messages/phrase.h"

// The words of `other`, which is in the language, with the values that the text has where the pattern has
// "%s"; nothing if the text does not fit the pattern. A value ends where the words behind it begin for the
// first time.
std::optional<std::string> Retold(std::string_view text, std::string_view pattern, const std::string& other,
                                  eLanguage language);

// An English text, UTF-8, in both languages, by the first of the phrases that it fits; in English alone where
// it fits none.
eBilingual ByPhrase(const std::string& english, std::span<const ePhrase> phrases);
