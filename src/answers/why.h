#pragma once

#include <string>

#include "base/bilingual.h"
#include "host/node.h"
#include "inspect/description.h"
#include "scene/run_journal.h"

namespace answers {

// The version of the answer's keys; rises when one is taken out or changes its meaning.
inline constexpr int kWhySchema = 1;

// What became of the node in a run: what it is and by which property, its bone, mesh, materials, animations
// and files; or the rule that left it out, with the ancestor that is to blame. All of it from what the run
// has noted. Words are those of the language: of English for machines.
inspect::eDescription DescribeNode(const eRunJournal& journal, const host::INode& node, eLanguage language);

// The same for people, UTF-8.
std::string NodeText(const eRunJournal& journal, const host::INode& node, eLanguage language);

}  // namespace answers
