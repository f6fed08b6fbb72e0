#include "platform/async_file.h"

#include <aio.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <utility>

#include "platform/native_path.h"
#include "platform/posix/errno_status.h"

namespace platform {

struct eAsyncFile::eRequest {
    int descriptor = -1;
    bool isUnderWay = false;
    const std::unique_ptr<aiocb> block = std::make_unique<aiocb>();

    void Sleep() {
        const aiocb* list[] = {block.get()};
        while (::aio_error(block.get()) == EINPROGRESS) {
            ::aio_suspend(list, 1, nullptr);
        }
    }
};

eAsyncFile::eAsyncFile() : request(std::make_unique<eRequest>()) {}

eAsyncFile::~eAsyncFile() {
    Cancel();
    if (request->descriptor >= 0) {
        ::close(request->descriptor);
    }
}

eIoStatus eAsyncFile::Open(std::string_view path) {
    Cancel();
    if (request->descriptor >= 0) {
        ::close(std::exchange(request->descriptor, -1));
    }
    std::string native;
    const eIoStatus found = MakeNative(path, ePathForm::Resource, native);
    if (!found.IsOk()) {
        return found;
    }
    // Not to wait for the other end, should the name turn out to be a pipe.
    const int descriptor = ::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return StatusFromErrno(errno);
    }
    struct stat status;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return StatusFromErrno(EACCES);
    }
    request->descriptor = descriptor;
    length = status.st_size;
    return {};
}

eIoStatus eAsyncFile::Start(std::int64_t position, void* data, std::size_t count) {
    Cancel();
    *request->block = {};
    request->block->aio_fildes = request->descriptor;
    request->block->aio_offset = position;
    request->block->aio_buf = data;
    request->block->aio_nbytes = count;
    request->block->aio_sigevent.sigev_notify = SIGEV_NONE;
    request->isUnderWay = ::aio_read(request->block.get()) == 0;
    return request->isUnderWay ? eIoStatus{} : StatusFromErrno(errno);
}

eIoStatus eAsyncFile::Wait(std::size_t& got) {
    got = 0;
    if (!request->isUnderWay) {
        return StatusFromErrno(EINVAL);
    }
    request->Sleep();
    request->isUnderWay = false;
    const int error = ::aio_error(request->block.get());
    const ssize_t count = ::aio_return(request->block.get());
    if (error != 0) {
        return StatusFromErrno(error);
    }
    got = static_cast<std::size_t>(count);
    return {};
}

void eAsyncFile::Cancel() {
    if (!request->isUnderWay) {
        return;
    }
    // A read that has begun goes on to its end.
    if (::aio_cancel(request->descriptor, request->block.get()) == AIO_NOTCANCELED) {
        request->Sleep();
    }
    ::aio_return(request->block.get());
    request->isUnderWay = false;
}

}  // namespace platform
