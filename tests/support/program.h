// Runs the program as its users do.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "support/temp_folder.h"

namespace support {

struct eProgramResult {
    int exitCode = -1;  // 128 and the signal's number for a killed program
    std::string output;
    std::string errors;
};

// The arguments are words of a POSIX shell. Output and errors go through files of the folder.
inline eProgramResult RunProgram(const eTempFolder& folder, const std::string& arguments) {
    std::string command = ZYR_PROGRAM;
    command += " " + arguments + " >'" + (folder / "stdout") + "' 2>'" + (folder / "stderr") + "' </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), folder.Read("stdout"),
            folder.Read("stderr")};
}

}  // namespace support
