#include "standalone/loaders/assimp/studio_names.h"

#include <cstdint>
#include <cstring>
#include <set>

namespace standalone {
namespace {

constexpr std::uint16_t kMainChunk = 0x4D4D, kEditChunk = 0x3D3D, kObjectChunk = 0x4000;
constexpr std::size_t kHeadBytes = 6;

// Calls what it is given with the kind and the body of each chunk, as far as their lengths can be true.
template <class Visit>
void ForEachChunk(std::string_view bytes, const Visit& visit) {
    while (bytes.size() >= kHeadBytes) {
        std::uint16_t kind = 0;
        std::uint32_t length = 0;
        std::memcpy(&kind, bytes.data(), sizeof kind);
        std::memcpy(&length, bytes.data() + sizeof kind, sizeof length);
        if (length < kHeadBytes || length > bytes.size()) {
            return;
        }
        visit(kind, bytes.substr(kHeadBytes, length - kHeadBytes));
        bytes.remove_prefix(length);
    }
}

}  // namespace

std::vector<std::string> SharedStudioNames(std::string_view bytes) {
    std::set<std::string_view> seen;
    std::set<std::string> shared;
    const auto visitObject = [&](std::uint16_t kind, std::string_view body) {
        const std::string_view name = body.substr(0, body.find('\0'));
        if (kind == kObjectChunk && !seen.insert(name).second) {
            shared.emplace(name);
        }
    };
    const auto visitEdit = [&](std::uint16_t kind, std::string_view body) {
        if (kind == kEditChunk) {
            ForEachChunk(body, visitObject);
        }
    };
    ForEachChunk(bytes, [&](std::uint16_t kind, std::string_view body) {
        if (kind == kMainChunk) {
            ForEachChunk(body, visitEdit);
        }
    });
    return {shared.begin(), shared.end()};
}

}  // namespace standalone
