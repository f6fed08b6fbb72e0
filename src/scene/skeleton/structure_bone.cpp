#include "scene/skeleton/structure_bone.h"

#include "base/ansi.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "scene/properties/prop_text.h"
#include "scene/properties/text_words.h"

namespace {

void WriteHold(xIo::xSdl::eWriter& writer, std::string_view value) {
    writer.BlockBegin().Word("hold");
    for (const std::string_view word : WordsOf(value, " ")) {
        writer.String(word);
    }
    writer.BlockEndLine();
}

}  // namespace

void WriteStructureBone(Export& run, const std::string& userProps) {
    xIo::xSdl::eWriter& writer = *run.texts->defWriter;
    bool isOpen = false;
    ePropText pair(userProps);
    for (bool more = !userProps.empty(); more; more = pair.Next()) {
        const std::string_view value = TrimBlanks(pair.Value());
        if (!EqualNoAsciiCase(TrimBlanks(pair.Key()), "hold") || value.empty()) {
            continue;
        }
        if (!isOpen) {
            writer.BlockBegin().Word("structure_bone").EndLine();
            isOpen = true;
        }
        WriteHold(writer, value);
    }
    if (isOpen) {
        writer.BlockEndLine();
    }
}
