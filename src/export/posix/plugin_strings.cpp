#include "export/plugin_strings.h"

namespace {

struct ePluginText {
    int id;
    const char* text;
};

constexpr ePluginText kTexts[] = {
#define PLUGIN_STRING(id, text) {id, text},
#include "export/plugin_string_table.inc"
#undef PLUGIN_STRING
};

}  // namespace

// A text of the table stays good for ever.
const char* GetString(int id) {
    for (const ePluginText& entry : kTexts) {
        if (entry.id == id) {
            return entry.text;
        }
    }
    return nullptr;
}
