// A program that ends as programs should not: by a fatal error or by a fault of the processor.
#include <string_view>

#include "base/diagnostics.h"

namespace {

// The compiler must not see where the pointer leads.
int* volatile nowhere = nullptr;

}  // namespace

int main(int argc, char** argv) {
    xDebug::InstallExceptionReport();
    if (argc == 2 && argv[1] == std::string_view("fail")) {
        Fail("io/stream_file.cpp", 12, "x - open error!");
    }
    return *nowhere;
}
