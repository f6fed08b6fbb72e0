#pragma once

#include <array>
#include <memory>
#include <string>

#include "io/streams/stream.h"
#include "platform/async_file.h"

namespace xIo::xRepository {

// Reads a file from its start to its end while the caller works on what was read before: the buffer has two
// halves, and while one is handed out the next piece of the file comes into the other. Moves to other
// positions are allowed and cost a read.
class eFileStreamReadAsync : public eStream {
public:
    eFileStreamReadAsync();
    ~eFileStreamReadAsync() override;

    // False if the file can't be opened or holds 2 GiB; see Status.
    bool Open(const std::string& path);
    // The first failure of the medium; what could not be read is zeros.
    const platform::eIoStatus& Status() const { return status; }

protected:
    void Fill() override;

private:
    static constexpr int kHalf = 0x80000;
    static constexpr int kBlock = 0x800;  // reads are whole multiples of it

    void FillNext();
    void FillHere();
    // Starts to read into the half what lies at the position; nothing beyond the end of the file.
    void StartRead(int half, std::int32_t position);
    void FinishRead(int half);
    void ShowHalf(int half);
    std::uint8_t* Half(int half) { return buffer->data() + static_cast<std::ptrdiff_t>(half) * kHalf; }
    void Remember(const platform::eIoStatus& result);

    std::unique_ptr<std::array<std::uint8_t, 2 * kHalf>> buffer;
    platform::eAsyncFile file;
    platform::eIoStatus status;
    int activeHalf = 0;
    std::int32_t nextPosition = -1;  // where a fill finds the read in flight; -1 for nowhere
    std::int32_t inFlight = 0;       // bytes of that read, 0 for none
};

}  // namespace xIo::xRepository
