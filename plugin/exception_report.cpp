// As long as the module is loaded, an unhandled processor exception is told by its name.
#include "base/diagnostics.h"
#include "platform/exception_filter.h"

namespace {

struct eReportWhileLoaded {
    eReportWhileLoaded() { xDebug::InstallExceptionReport(); }
    ~eReportWhileLoaded() { platform::RestoreExceptionFilter(); }
};

const eReportWhileLoaded reportWhileLoaded;

}  // namespace
