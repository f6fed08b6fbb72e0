#include "inspect/dds_view.h"

#include "texture/dds_reader.h"

namespace inspect {

eDescription DescribeDds(std::span<const std::uint8_t> bytes, std::string& problem) {
    const eDdsFile file = ReadDds(bytes);
    if (!file.problems.empty()) {
        const eDdsProblem& first = file.problems.front();
        problem = first.text + " at byte " + std::to_string(first.offset);
        return {};
    }
    eDescription levels = eDescription::array();
    for (const eDdsLevel& level : file.levels) {
        levels.push_back({{"width", level.width}, {"height", level.height}, {"bytes", level.byteCount}});
    }
    return {{"kind", "texture"},
            {"bytes", bytes.size()},
            {"width", file.header.width},
            {"height", file.header.height},
            {"format", PixelFormatName(file.header.pixelFormat)},
            {"levelCount", file.levels.size()},
            {"levels", levels}};
}

}  // namespace inspect
