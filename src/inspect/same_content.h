#pragma once

#include "platform/file_layer.h"

namespace inspect {

enum class eSameness { Different, ButForHead, Same };

// Compares two versions of a file. The comment lines that tell who wrote a text, and when, say nothing of
// what is in it: texts that differ there alone are the same but for their head.
eSameness CompareContent(const platform::eFileContent& before, const platform::eFileContent& after);

}  // namespace inspect
