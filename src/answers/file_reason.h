#pragma once

#include "base/bilingual.h"
#include "io/name.h"
#include "scene/run_journal.h"

namespace answers {

// Why a file of the run comes out as it does, UTF-8: what feeds it, and for a picture the rule that decided.
eBilingual ReasonOf(const eRunJournal& journal, const eName& path, const eFileNote& file);

// The rule in one word, for machines.
const char* RuleWord(eFileRule rule);

}  // namespace answers
