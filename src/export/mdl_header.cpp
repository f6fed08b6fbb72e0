#include "export/mdl_header.h"

#include <string>

#include "platform/local_time.h"
#include "platform/user.h"
#include "run/export.h"
#include "run/model_texts.h"

void WriteMdlHeader(Export& run) {
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    const std::string scene = run.host->GetCurFilePath();
    writer.Word(";Exported by:\t").Word(platform::AccountName()).EndLine();
    writer.Word(";Date:\t\t\t").Word(platform::ClassicTime()).EndLine();
    writer.Word(";File:\t\t\t").Word(platform::NetworkPath(scene).value_or(scene)).EndLine();
}
