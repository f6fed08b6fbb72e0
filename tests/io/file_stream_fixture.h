#pragma once

#include <gtest/gtest.h>

#include "io/streams/stream_file.h"
#include "support/message_collector.h"
#include "support/temp_folder.h"

namespace io_test {

using xIo::eFileStream;
using xIo::streamDirect;
using xIo::streamPrompt;
using xIo::streamRead;
using xIo::streamTruncate;
using xIo::streamWrite;

inline constexpr std::uint32_t writeNew = streamWrite | streamTruncate;

class eFileStreamTest : public testing::Test {
protected:
    support::eTempFolder folder;
    support::eMessageCollector messages;
};

}  // namespace io_test
