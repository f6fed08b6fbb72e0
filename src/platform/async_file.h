// A file that is read while the caller works on. One read at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/io_status.h"

namespace platform {

class eAsyncFile {
public:
    eAsyncFile();
    ~eAsyncFile();  // cancels
    eAsyncFile(const eAsyncFile&) = delete;
    eAsyncFile& operator=(const eAsyncFile&) = delete;

    eIoStatus Open(std::string_view path);
    // In bytes; valid once open.
    std::int64_t Length() const { return length; }

    // Starts to read count bytes from the position into data, which stays alone until Wait or Cancel.
    eIoStatus Start(std::int64_t position, void* data, std::size_t count);
    // Returns when the read has ended; got is less than count only at the end of the file or on an error.
    eIoStatus Wait(std::size_t& got);
    // When it returns the system writes no more to the data. Nothing to do without a read.
    void Cancel();

private:
    struct eRequest;
    std::unique_ptr<eRequest> request;
    std::int64_t length = 0;
};

}  // namespace platform
