#include "batch/out_of_date.h"

#include <fstream>
#include <set>

#include "platform/run_program.h"
#include "platform/utf8_path.h"

namespace batch {

std::optional<std::vector<std::string>> OutOfDate(const std::string& buildFolder,
                                                  const std::vector<eBatchScene>& scenes) {
    // Without a status before it, the line of an edge is its description: the scene.
    const std::optional<int> status = platform::RunProgram(
        {"sh", "-c", "NINJA_STATUS= TERM=dumb exec ninja -n exports > out-of-date"}, buildFolder);
    if (status != 0) {
        return std::nullopt;
    }
    std::set<std::string> known;
    for (const eBatchScene& scene : scenes) {
        known.insert(scene.path);
    }
    std::vector<std::string> found;
    std::ifstream lines(platform::PathFromUtf8(buildFolder + "/out-of-date"), std::ios::binary);
    for (std::string line; std::getline(lines, line);) {
        if (known.contains(line)) {
            found.push_back(line);
        }
    }
    return found;
}

}  // namespace batch
