// The five functions by which a host gets to know the module. The linker is told their names (exports.map,
// win32/exports.def) and hides everything else.
#include "export/plugin_strings.h"
#include "plugin/class_descriptor.h"

extern "C" {

const char* LibDescription() {
    return GetString(kLibraryDescriptionString);
}

int LibNumberClasses() {
    return 1;
}

host::ClassDesc* LibClassDesc(int index) {
    return index == 0 ? &ExporterDescriptor() : nullptr;
}

std::uint32_t LibVersion() {
    return host::kKitVersion;
}

// The host may load the module when it is needed first.
std::uint32_t CanAutoDefer() {
    return 1;
}

}  // extern "C"
