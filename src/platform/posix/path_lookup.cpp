#include "platform/path_lookup.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/code_page.h"
#include "platform/drive_table.h"
#include "platform/native_path.h"
#include "platform/path_text.h"
#include "platform/posix/errno_status.h"
#include "platform/posix/known_folders.h"

namespace platform {
namespace {

constexpr const char* nativeNullDevice = "/dev/null";

// A path of the system taken apart: the native folder where it starts, and its parts in code page 1251.
struct ePathParts {
    std::string start;  // without trailing slash
    std::vector<std::string> parts;
    bool isRelative = false;  // ".." may climb above the start; it stays at the top of a drive or of the disk
};

void SplitParts(std::string_view path, ePathParts& result) {
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find_first_of("/\\"));
        path.remove_prefix(part.size() < path.size() ? part.size() + 1 : part.size());
        if (part == "..") {
            if (!result.parts.empty()) {
                result.parts.pop_back();
            } else if (result.isRelative) {
                result.start = NativeParent(result.start);
            }
        } else if (!part.empty() && part != ".") {
            result.parts.emplace_back(part);
        }
    }
}

// Nothing if the path names a drive without folder.
std::optional<ePathParts> TakeApart(std::string_view path) {
    ePathParts result;
    if (HasDrive(path)) {
        const std::optional<std::string> folder = DriveFolder(path[0]);
        if (!folder) {
            return std::nullopt;
        }
        MakeNative(*folder, ePathForm::Native, result.start);
        path.remove_prefix(2);
    } else if (!path.starts_with('/') && !path.starts_with('\\')) {
        MakeNative(".", ePathForm::Native, result.start);
        result.isRelative = true;
    }
    if (result.start == "/") {
        result.start.clear();
    }
    SplitParts(path, result);
    return result;
}

bool ExistsNatively(const std::string& native) {
    struct stat status;
    return ::stat(native.c_str(), &status) == 0;
}

bool SameLetters(std::string_view ansi, std::string_view lowerAnsi) {
    for (std::size_t index = 0; index < ansi.size(); ++index) {
        if (LowerAnsiByte(ansi[index]) != lowerAnsi[index]) {
            return false;
        }
    }
    return ansi.size() == lowerAnsi.size();
}

std::string LowerPart(std::string_view part) {
    std::string lower(part);
    for (char& byte : lower) {
        byte = LowerAnsiByte(byte);
    }
    return lower;
}

// Without allocation, as a folder may hold thousands of names.
bool IsOtherSpelling(std::string_view native, std::string_view lowerAnsi) {
    while (!lowerAnsi.empty()) {
        const eUtf8Step step = native.empty() ? eUtf8Step{} : ReadUtf8(native);
        const std::optional<char32_t> escaped = ReadEscape(lowerAnsi);
        const int byte = step.length != 0 ? AnsiByte(step.character) : -1;
        const bool isSame = escaped ? step.character == *escaped
                                    : byte >= 0 && LowerAnsiByte(static_cast<char>(byte)) == lowerAnsi[0];
        if (!isSame) {
            return false;
        }
        native.remove_prefix(step.length);
        lowerAnsi.remove_prefix(escaped ? kEscapeLength : 1);
    }
    return native.empty();
}

// Takes the names of a folder one by one and keeps the first in byte order that is the part in other letters.
class eOtherSpelling {
public:
    explicit eOtherSpelling(std::string_view part)
        : lower(LowerPart(part)), nativeLength(Utf8FromAnsi(part).size()) {}

    void Try(std::string_view name) {
        // The letters of a pair have codes of equal length, so most names fall out by their length alone.
        const bool isBetter = name.size() == nativeLength && (best.empty() || name < best);
        if (isBetter && IsOtherSpelling(name, lower)) {
            best = name;
        }
    }
    const std::string& Best() const { return best; }

private:
    const std::string lower;
    const std::size_t nativeLength;
    std::string best;
};

// Empty if there is none.
std::string FindOtherSpelling(const std::unordered_set<std::string>& names, std::string_view part) {
    eOtherSpelling spelling(part);
    std::ranges::for_each(names, [&](const std::string& name) { spelling.Try(name); });
    return spelling.Best();
}

std::string FindOtherSpelling(const std::string& folder, std::string_view part) {
    const std::string native = folder.empty() ? "/" : folder;
    if (const auto* const names = KnownNames(native)) {
        return FindOtherSpelling(*names, part);
    }
    eOtherSpelling spelling(part);
    const std::unique_ptr<DIR, int (*)(DIR*)> list(::opendir(native.c_str()), ::closedir);
    for (const dirent* entry = list ? ::readdir(list.get()) : nullptr; entry != nullptr;
         entry = ::readdir(list.get())) {
        spelling.Try(entry->d_name);
    }
    return spelling.Best();
}

// How many of the parts exist as spelled.
std::size_t CountExactParts(const std::vector<std::string>& paths) {
    std::size_t count = paths.size();
    while (count > 0 && !ExistsNatively(paths[count - 1])) {
        --count;
    }
    return count;
}

std::vector<std::string> ExactPaths(const ePathParts& path) {
    std::vector<std::string> paths;
    std::string native = path.start;
    for (const std::string& part : path.parts) {
        native.append("/").append(Utf8FromAnsi(part));
        paths.push_back(native);
    }
    return paths;
}

std::string LookUpInDisk(const ePathParts& path, const std::vector<std::string>& exact) {
    const std::size_t exactCount = CountExactParts(exact);
    std::string native = exactCount == 0 ? path.start : exact[exactCount - 1];
    bool exists = true;
    for (std::size_t index = exactCount; index < path.parts.size(); ++index) {
        const std::string& part = path.parts[index];
        std::string name = Utf8FromAnsi(part);
        if (exists && (index == exactCount || !ExistsNatively(NativeJoin(native, name)))) {
            name = FindOtherSpelling(native, part);
            exists = !name.empty();
        }
        native.append("/").append(exists ? name : Utf8FromAnsi(LowerPart(part)));
    }
    return native.empty() ? "/" : native;
}

// A folder whose names are remembered tells at once what it has and what not.
std::string LookUp(const ePathParts& path) {
    const std::vector<std::string> exact = ExactPaths(path);
    const std::string folder = exact.empty() ? std::string() : NativeParent(exact.back());
    const auto* const names = RememberedNames(folder);
    if (names == nullptr) {
        return LookUpInDisk(path, exact);
    }
    const std::string& part = path.parts.back();
    if (names->contains(Utf8FromAnsi(part))) {
        return exact.back();
    }
    const std::string other = FindOtherSpelling(*names, part);
    return NativeJoin(folder, other.empty() ? Utf8FromAnsi(LowerPart(part)) : other);
}

}  // namespace

bool IsNullDevice(std::string_view path) {
    return SameLetters(path, "nul") || path == nativeNullDevice;
}

eIoStatus FindOnDisk(std::string_view path, std::string& diskPath) {
    diskPath.clear();
    if (IsNullDevice(path)) {
        diskPath = nativeNullDevice;
        return {};
    }
    if (path.empty()) {
        return StatusFromErrno(ENOENT);
    }
    const std::optional<ePathParts> parts = TakeApart(path);
    if (!parts) {
        return {eIoReason::NoDrive, 0};
    }
    diskPath = LookUp(*parts);
    return {};
}

std::string DiskPath(std::string_view path, ePathForm form) {
    std::string native;
    return MakeNative(path, form, native).IsOk() ? native : Utf8FromAnsi(path);
}

}  // namespace platform
