#pragma once

#include <string>

#include "verify/finding.h"

namespace verify {

// A picture of the files against the map that it comes from.
struct ePictureVerdict {
    std::string file;
    bool isCopy = false;
    double decibels = 0;   // peak signal to noise of one that was made anew; 0 of a copy
    eFindings findings{};  // "other picture", "picture quality", "broken picture", "picture size"
};

}  // namespace verify
