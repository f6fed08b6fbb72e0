// A program that ends as programs should not: by a fatal error or by a fault of the processor.
#include <string_view>

#include "base/diagnostics.h"

namespace {

void ReadNothing() {
    volatile int* nothing = nullptr;
    *nothing = 1;
}

}  // namespace

int main(int argc, char** argv) {
    xDebug::InstallExceptionReport();
    if (argc == 2 && argv[1] == std::string_view("fail")) {
        Fail("io/stream_file.cpp", 12, "x - open error!");
    }
    ReadNothing();
    return 0;
}
