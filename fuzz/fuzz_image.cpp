// Any bytes as a picture file: decoded or refused, and a decoded one may be sampled anywhere.

#include <cstddef>
#include <cstdint>

#include "standalone/pictures/image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const standalone::eDecodedImage decoded = standalone::DecodeImage({data, size});
    if (decoded.image != nullptr) {
        decoded.image->Nearest(0.999F, -0.25F);
        decoded.image->Bilinear(1e9F, -0.25F);
    }
    return 0;
}
