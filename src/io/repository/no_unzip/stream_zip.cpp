// Containers where the unzip library is not at hand: they can be written, not read.
#include "io/repository/stream_zip.h"

namespace xIo::xRepository {

eZipContainer::eZipContainer(const std::string& containerPath) : path(containerPath) {
    FailToOpen("this build of the program reads no containers");
}

eZipContainer::~eZipContainer() = default;

bool eZipContainer::InflateInto(const eZipEntry&, eZipStream&) {
    return false;  // nothing was ever opened
}

}  // namespace xIo::xRepository
