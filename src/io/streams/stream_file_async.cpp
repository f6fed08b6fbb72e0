#include "io/streams/stream_file_async.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <system_error>

namespace xIo::xRepository {

eFileStreamReadAsync::eFileStreamReadAsync()
    : buffer(std::make_unique<std::array<std::uint8_t, 2 * kHalf>>()) {
    flags = streamRead;
}

eFileStreamReadAsync::~eFileStreamReadAsync() {
    file.Cancel();
    bufferBegin = nullptr;  // a part of `buffer`, not the base's to free
}

bool eFileStreamReadAsync::Open(const std::string& path) {
    readPastEnd = false;
    nextPosition = -1;
    inFlight = 0;
    bufferBase = 0;
    status = file.Open(path);
    // A buffer at the end of the file ends at a position, too.
    if (status.IsOk() && file.Length() > std::numeric_limits<std::int32_t>::max() - kHalf) {
        status = {platform::eIoReason::Other, static_cast<int>(std::errc::file_too_large)};
    }
    if (!status.IsOk()) {
        flags |= streamOpenFailed;
        size = 0;
        return false;
    }
    size = static_cast<std::int32_t>(file.Length());
    ShowHalf(0);
    Fill();
    return true;
}

void eFileStreamReadAsync::Fill() {
    if (bufferBase == nextPosition && inFlight > 0) {
        FillNext();
    } else {
        FillHere();
    }
    const std::int32_t behind = bufferBase + kHalf;
    StartRead(1 - activeHalf, behind);
    nextPosition = inFlight > 0 ? behind : -1;
}

void eFileStreamReadAsync::FillNext() {
    FinishRead(1 - activeHalf);
    ShowHalf(1 - activeHalf);
}

void eFileStreamReadAsync::FillHere() {
    file.Cancel();
    const std::int32_t asked = bufferBase;
    bufferBase -= bufferBase % kBlock;
    ShowHalf(0);
    StartRead(0, bufferBase);
    FinishRead(0);
    cursor += asked - bufferBase;
}

void eFileStreamReadAsync::StartRead(int half, std::int32_t position) {
    const std::int32_t left = std::clamp(size - position, 0, kHalf);
    inFlight = (left + kBlock - 1) / kBlock * kBlock;
    if (inFlight == 0) {
        return;
    }
    Remember(file.Start(position, Half(half), static_cast<std::size_t>(inFlight)));
    inFlight = status.IsOk() ? inFlight : 0;
}

// What the file does not give, because it was cut meanwhile or can't be read, is zeros.
void eFileStreamReadAsync::FinishRead(int half) {
    std::size_t got = 0;
    if (inFlight > 0) {
        Remember(file.Wait(got));
    }
    std::memset(Half(half) + got, 0, kHalf - got);
    inFlight = 0;
}

void eFileStreamReadAsync::ShowHalf(int half) {
    activeHalf = half;
    bufferBegin = Half(half);
    cursor = bufferBegin;
    bufferEnd = bufferBegin + kHalf;
}

void eFileStreamReadAsync::Remember(const platform::eIoStatus& result) {
    if (status.IsOk()) {
        status = result;
    }
}

}  // namespace xIo::xRepository
