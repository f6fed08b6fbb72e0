#include "animation/model_motion.h"
#include "base/numeric_locale.h"
#include "export/common_resources.h"
#include "export/common_set.h"
#include "export/left_files.h"
#include "export/model_locks.h"
#include "export/model_loop.h"
#include "export/options_file.h"
#include "export/plugin_strings.h"
#include "export/render_preparation.h"
#include "export/run_start.h"
#include "export/scan.h"
#include "io/streams/gathered_files.h"
#include "material/queries/shade_context.h"
#include "material/run_materials.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/resource_sets.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"

Export::Export() : shadeContext(scene->sceneLights) {}
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
        const eModelLocks locks(*this);
        xIo::eGatheredFiles files;
        if (locks.AreHeld()) {
            PrepareRendering(*this);
            ExportModels(*this);
            FlushCommonResources(*this);
            EndRendering(*this);
            RemoveLeftFiles(*this, locks);
        }
        ForgetScene(*this);
        files.Settle();
        SaveOptions(*this);
    }
    EndRun(*this);
    return 1;
}
