#include "mesh/strips/strip_messages.h"

#include <cstdio>

namespace {

void PrintOnStandardOutput(const char* text) {
    std::fputs(text, stdout);
}

}  // namespace

eStripMessageSink stripMessageSink = PrintOnStandardOutput;
