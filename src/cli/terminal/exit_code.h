#pragma once

namespace cli {

// How the program ends.
enum eExitCode {
    kExitDone = 0,         // warnings allowed
    kExitFatal = 1,        // a fatal error
    kExitUnlike = 1,       // diff: the two say different things
    kExitUsage = 2,        // wrong usage, or a file that can't be read: nothing was written
    kExitErrors = 3,       // came to its end, but showed errors
    kExitAdvice = 4,       // lint --strict: no errors, but something was told
    kExitDiffers = 5,      // verify, check: a file is not what it should be
    kExitAtWork = 6,       // batch --state: the farm has not come to its end
    kExitCancelled = 130,  // the user stopped it
};

}  // namespace cli
