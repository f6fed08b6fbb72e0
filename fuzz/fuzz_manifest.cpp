// Any bytes as a manifest: it is refused with a reason, or comes back as it was.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "answers/manifest_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    eBilingual problem;
    const auto manifest = answers::ReadManifest({reinterpret_cast<const char*>(data), size}, "/a/b", problem);
    if (manifest.has_value() != problem.IsEmpty()) {
        std::abort();
    }
    if (manifest && !answers::ReadManifest(answers::ManifestText(*manifest, "/a/b"), "/a/b", problem)) {
        std::abort();
    }
    return 0;
}
