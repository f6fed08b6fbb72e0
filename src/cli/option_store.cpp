#include "cli/option_store.h"

#include <algorithm>

#include "cli/option_table.h"
#include "export/export.h"
#include "export/options_file.h"

namespace cli {

bool StoreOptions(const Export& run) {
    SaveOptions(run);
    Export check;
    check.host = run.host;
    LoadOptions(check);
    return std::ranges::all_of(OptionFields(), [&](const eOptionField& field) {
        return !field.isStored || OptionText(check.options, field) == OptionText(run.options, field);
    });
}

}  // namespace cli
