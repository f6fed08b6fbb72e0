#include "base/diagnostics.h"
#include "cli/program.h"
#include "platform/heap.h"
#include "platform/terminal.h"

int main(int argc, char** argv) {
    platform::KeepHeap();
    xDebug::InstallExceptionReport();
    platform::UseUtf8Terminal();
    return cli::RunProgram(platform::ProgramArguments(argc, argv));
}
