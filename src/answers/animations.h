#pragma once

#include <string>

#include "base/bilingual.h"
#include "inspect/description.h"
#include "scene/run_journal.h"

namespace answers {

// The animations of a run's models in the order of their declarations: name, set, frames, file, the bones
// that it holds and that move, and the others of its model with which it shares frames of a bone.
inspect::eDescription DescribeAnimations(const eRunJournal& journal);

// The same for people, UTF-8: a table for each model; empty without animations.
std::string AnimationText(const eRunJournal& journal, eLanguage language);

}  // namespace answers
