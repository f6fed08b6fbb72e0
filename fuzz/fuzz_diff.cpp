// Two halves of any bytes as versions of one file: whatever the readers let through must be compared to its
// end.
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/diagnostics.h"
#include "diff/compare_files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead | xDebug::noLogRecord);
    xDebug::SetLogSink([](const std::string&) {});
    if (size == 0) {
        return 0;
    }
    constexpr const char* kNames[] = {"a.mdl", "a.def", ".material", ".mesh", "a.anm", "a.tga"};
    const char* const name = kNames[data[0] % std::size(kNames)];
    const std::uint8_t* const middle = data + 1 + (size - 1) / 2;
    eBilingual problem;
    diff::CompareFiles(diff::ReadFile(name, {data + 1, middle}), diff::ReadFile(name, {middle, data + size}),
                       {}, problem);
    return 0;
}
