#include "standalone/loaders/assimp/wavefront_names.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace standalone {
namespace {

constexpr std::string_view kMark = "_$Own$_";
constexpr std::string_view kBlanks = " \t\r\n";

// Of "o NAME" and "g NAME", which both begin an object; empty for other lines.
std::string_view ObjectNameOf(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.size() < 2 || (line[0] != 'o' && line[0] != 'g') ||
        kBlanks.find(line[1]) == std::string_view::npos) {
        return {};
    }
    const std::size_t start = line.find_first_not_of(kBlanks, 1);
    return start == std::string_view::npos ? std::string_view()
                                           : line.substr(start, line.find_last_not_of(kBlanks) + 1 - start);
}

std::string_view LineOf(std::string_view text) {
    const std::size_t end = text.find('\n');
    return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

// True if faces, lines or points come before the next object. Some writers put "g default" in front of the
// points of each object, and its own name in front of its faces.
bool HasElements(std::string_view behind) {
    for (; !behind.empty(); behind.remove_prefix(LineOf(behind).size())) {
        const std::string_view line = LineOf(behind);
        const std::size_t word = line.find_first_not_of(kBlanks);
        if (!ObjectNameOf(line).empty()) {
            return false;
        }
        if (word != std::string_view::npos &&
            std::string_view("flp").find(line[word]) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<std::string> WithOwnWavefrontNames(std::string_view bytes) {
    std::string copy;
    std::string_view current;
    std::unordered_map<std::string_view, int> begun;  // by name: how often
    std::size_t copied = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::string_view line = LineOf(bytes.substr(at));
        const std::string_view name = ObjectNameOf(line);
        at += line.size();
        if (name.empty() || name == current) {
            continue;
        }
        current = name;
        const int count = ++begun[name];
        if (count > 1 && HasElements(bytes.substr(at))) {
            const auto end = static_cast<std::size_t>(name.data() + name.size() - bytes.data());
            copy.append(bytes.substr(copied, end - copied)).append(kMark).append(std::to_string(count));
            copied = end;
        }
    }
    return copied == 0 ? std::nullopt : std::optional(copy.append(bytes.substr(copied)));
}

std::string_view WavefrontNameInFile(std::string_view name) {
    return name.substr(0, name.find(kMark));
}

}  // namespace standalone
