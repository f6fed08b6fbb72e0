// A program that ends as programs should not: by a fatal error or by a fault of the processor.
#include <string_view>

#include "base/diagnostics.h"

namespace {

// The compiler must not see where the pointer leads.
int* volatile nowhere = nullptr;

int DiveDeep(int depth) {
    volatile char room[4096];
    room[0] = static_cast<char>(depth);
    return depth < 0 ? 0 : DiveDeep(depth + 1) + room[0];
}

}  // namespace

int main(int argc, char** argv) {
    xDebug::InstallExceptionReport();
    if (argc == 2 && argv[1] == std::string_view("fail")) {
        Fail("io/stream_file.cpp", 12, "x - open error!");
    }
    if (argc == 2 && argv[1] == std::string_view("dive")) {
        return DiveDeep(0);
    }
    return *nowhere;
}
