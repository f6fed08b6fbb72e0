// The reader of an FBX file's own words on any bytes, binary or text: it must end within their size.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "standalone/loaders/fbx/fbx_models.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    standalone::ReadFbxModels({reinterpret_cast<const char*>(data), size});
    return 0;
}
