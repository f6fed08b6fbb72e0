#include "base/diagnostics.h"
#include "cli/program.h"

int main(int argc, char** argv) {
    xDebug::InstallExceptionReport();
    return cli::RunProgram(argc, argv);
}
