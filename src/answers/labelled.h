#pragma once

#include "base/bilingual.h"
#include "inspect/description.h"

namespace answers {

// The answer for people: its keys, which stay the same for machines, in the words of the language, and so
// what is true, false or an empty list. Keys without words of their own stay as they are.
inspect::eDescription Labelled(const inspect::eDescription& answer, eLanguage language);

}  // namespace answers
