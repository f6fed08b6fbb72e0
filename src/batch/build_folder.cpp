#include "batch/build_folder.h"

#include <cstdint>
#include <cstdio>

namespace batch {

namespace {

std::string HexHash(const std::string& text) {
    constexpr std::uint64_t kOffset = 14695981039346656037u;
    constexpr std::uint64_t kPrime = 1099511628211u;
    std::uint64_t hash = kOffset;
    for (const char letter : text) {
        hash = (hash ^ static_cast<std::uint8_t>(letter)) * kPrime;
    }
    char hex[17];
    std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(hash));
    return hex;
}

// Letters that neither a shell nor a build file takes for something else; of other alphabets none are kept.
std::string PlainName(const std::string& path) {
    std::string name = path.substr(path.rfind('/') + 1);
    for (char& letter : name) {
        const bool isPlain = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
                             (letter >= '0' && letter <= '9') || letter == '.' || letter == '-';
        letter = isPlain ? letter : '_';
    }
    return name;
}

}  // namespace

eSceneFiles FilesOf(const std::string& buildFolder, const std::string& scene) {
    const std::string folder = buildFolder + "/" + PlainName(scene) + "-" + HexHash(scene) + "/";
    return {{folder + "models.json", folder + "models.log", folder + "models.sources"},
            {folder + "report.json", folder + "report.log", folder + "report.sources"},
            folder + "manifest.json",
            folder + "report.done"};
}

}  // namespace batch
