// Containers where the unzip library is not at hand: they can be written, not read.
#include "io/repository/stream_zip.h"

#include "base/diagnostics.h"
#include "base/format.h"

namespace xIo {

eZipStream::eZipStream(int) {}

namespace xRepository {

eZipContainer::eZipContainer(const std::string& containerPath) : path(containerPath) {
    FailToOpen("this build of the program reads no containers");
}

eZipContainer::~eZipContainer() = default;

void eZipContainer::FailToOpen(const std::string& reason) const {
    Fail(__FILE__, __LINE__, (format("%1%: can't open .pak (%2%)") % path % reason).Text());
}

std::unique_ptr<eZipStream> eZipContainer::Inflate(const eZipEntry&, const std::string&) {
    FailToOpen("this build of the program reads no containers");
}

}  // namespace xRepository
}  // namespace xIo
