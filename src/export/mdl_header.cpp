#include "export/mdl_header.h"

#include <string>

#include "base/ansi.h"
#include "platform/local_time.h"
#include "platform/user.h"
#include "run/export.h"
#include "run/model_texts.h"

namespace {

// The path as a file of the game can say it.
std::string OfThePage(const std::string& path) {
    return FromUtf8(ToUtf8(path)).text;
}

}  // namespace

void WriteMdlHeader(Export& run) {
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    const std::string scene = run.host->GetCurFilePath();
    writer.Word(";Exported by:\t").Word(platform::AccountName()).EndLine();
    writer.Word(";Date:\t\t\t").Word(platform::ClassicTime()).EndLine();
    writer.Word(";File:\t\t\t").Word(OfThePage(platform::NetworkPath(scene).value_or(scene))).EndLine();
}
