// Plug-in modules that a host must not use; each variant has one fault.
#include "host/class_desc.h"

extern "C" {

const char* LibDescription() {
    return "fake";
}

int LibNumberClasses() {
    return FAKE_CLASSES;
}

host::ClassDesc* LibClassDesc(int) {
    return nullptr;
}

std::uint32_t LibVersion() {
    return FAKE_VERSION;
}

#ifndef FAKE_LACKS_AUTO_DEFER
std::uint32_t CanAutoDefer() {
    return 1;
}
#endif

}  // extern "C"
