#include "scene/properties/node_properties.h"

#include <algorithm>
#include <array>

#include "base/ansi.h"
#include "host/node.h"
#include "scene/properties/prop_text.h"

namespace {

// Keys that never reach the game: the export acts on them, or an older one did.
constexpr std::array<std::string_view, 29> kReservedKeys = {
    "IKMin",         "IKMax",          "IKSpeed",    "IKType",          "IKLimit",       "IKTerminate",
    "Proper",        "Permit",         "type",       "model",           "xmodel",        "poly",
    "voxels",        "anitex",         "animation",  "animationresume", "animationauto", "layer",
    "oldskin",       "LODControlBone", "LODLastOff", "structure",       "DecalTarget",   "NoGroupMesh",
    "NoCastShadows", "NoGetShadows",   "Mesh",       "Color",           "Hold"};

constexpr char kLineEnd = '\r';
constexpr char kPairEnd = ';';
constexpr char kKeyEnd = '=';

bool IsKept(char byte) {
    return static_cast<signed char>(byte) >= ' ';
}

std::string PairsOf(const std::string& buffer) {
    std::string text(buffer.size(), '\0');
    char* out = text.data();
    for (const char byte : buffer) {
        if (byte == kLineEnd) {
            *out++ = kPairEnd;
        } else if (IsKept(byte)) {
            *out++ = byte;
        }
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
    return text;
}

bool IsReserved(std::string_view key) {
    return std::ranges::any_of(kReservedKeys,
                               [key](std::string_view reserved) { return EqualNoAsciiCase(reserved, key); });
}

}  // namespace

std::string NormalizeUserProps(const host::INode& node, bool dropReserved) {
    const std::string pairs = PairsOf(node.GetUserPropBuffer());
    std::string result;
    result.reserve(pairs.size() + 1);
    ePropText pair(pairs);
    for (bool more = !pairs.empty(); more; more = pair.Next()) {
        const std::string_view key = pair.Key();
        if (dropReserved && (key.empty() || IsReserved(key))) {
            continue;
        }
        result += key;
        if (!pair.Value().empty()) {
            result += kKeyEnd;
            result += pair.Value();
        }
        result += kPairEnd;
    }
    return result;
}

bool HasUserProp(const host::INode& node, std::string_view key) {
    // How much of `key` the current pair has repeated so far; the search ends where a pair's key ends right
    // behind all of it.
    constexpr std::size_t kMismatch = static_cast<std::size_t>(-1);
    std::size_t matched = 0;
    for (const char byte : node.GetUserPropBuffer()) {
        const bool pairEnd = byte == kLineEnd || byte == kPairEnd;
        if (pairEnd || byte == kKeyEnd) {
            if (matched == key.size()) {
                return true;
            }
            matched = pairEnd ? 0 : kMismatch;
        } else if (IsKept(byte) && matched != kMismatch) {
            const bool same = matched < key.size() && LowerAsciiByte(byte) == LowerAsciiByte(key[matched]);
            matched = same ? matched + 1 : kMismatch;
        }
    }
    return matched == key.size();
}
