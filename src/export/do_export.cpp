#include "run/export.h"

#include "base/numeric_locale.h"
#include "export/common_resources.h"
#include "export/model_loop.h"
#include "export/options_file.h"
#include "export/plugin_strings.h"
#include "export/render_preparation.h"
#include "export/run_start.h"
#include "export/scan.h"

Export::Export() = default;
Export::~Export() = default;

int Export::ExtCount() {
    return 1;
}

const char* Export::Ext(int n) {
    return n == 0 ? kModelExtension : "";
}

const char* Export::LongDesc() {
    return GetString(kLongDescriptionString);
}

const char* Export::ShortDesc() {
    return GetString(kShortDescriptionString);
}

const char* Export::AuthorName() {
    return kPluginAuthor;
}

const char* Export::CopyrightMessage() {
    return GetString(kCreditString);
}

const char* Export::OtherMessage1() {
    return "";
}

const char* Export::OtherMessage2() {
    return "";
}

unsigned Export::Version() {
    return 1;
}

void Export::ShowAbout(void*) {}

bool Export::SupportsOptions(int, std::uint32_t optionsWord) {
    return optionsWord == kExportSelectedOption;
}

// Neither the name that the user has chosen nor the exporter's interface matter: where files go is told by
// the options and the scene.
int Export::DoExport(const char*, host::ExpInterface*, host::Interface* hostInterface, bool suppressPrompts,
                     std::uint32_t optionsWord) {
    const eNumericLocale dotAsSeparator;
    BeginRun(*this, hostInterface, suppressPrompts, optionsWord);
    if (SettleOptions(*this)) {
        ClearRun(*this);
        ScanScene(*this);
        PrepareRendering(*this);
        ExportModels(*this);
        FlushCommonResources(*this);
        SaveOptions(*this);
        EndRendering(*this);
        ForgetScene(*this);
    }
    EndRun(*this);
    return 1;
}
