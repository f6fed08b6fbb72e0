#pragma once

#include <span>
#include <string>
#include <variant>

#include "base/bilingual.h"
#include "run/options.h"

namespace cli {

enum class eOptionKind {
    Flag,      // 0 or 1
    Number,    // a whole number
    Folder,    // a folder of this machine, or a path with a drive letter
    GamePath,  // a path inside the game
};

// A field of the options under the name that users and reports see.
struct eOptionField {
    const char* name;
    std::variant<int eExportOptions::*, bool eExportOptions::*, eName eExportOptions::*> member;
    eOptionKind kind = eOptionKind::Flag;
    bool isStored = true;  // kept in the options file
};

// In the order of the record.
std::span<const eOptionField> OptionFields();

// The value as text, UTF-8.
std::string OptionText(const eExportOptions& options, const eOptionField& field);

// Sets the option from text, UTF-8. Empty, or what is wrong with the text.
eBilingual SetOption(eExportOptions& options, const std::string& name, const std::string& text);

}  // namespace cli
