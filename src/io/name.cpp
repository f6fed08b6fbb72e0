#include "io/name.h"

#include <algorithm>
#include <vector>

#include "base/ansi.h"
#include "base/diagnostics.h"
#include "base/format.h"

void NormalizeName(std::string& text) {
    for (char& byte : text) {
        byte = byte == '\\' ? '/' : LowerAsciiByte(byte);
    }
}

namespace {

constexpr std::string_view kSlashes = "/\\";

// The slashes that a path begins with, behind its drive if it has one.
std::size_t RootLength(std::string_view path) {
    const std::size_t drive = path.size() > 1 && path[1] == ':' ? 2 : 0;
    return std::min(path.find_first_not_of(kSlashes, drive), path.size());
}

}  // namespace

std::string ResolveDots(std::string_view path) {
    const std::size_t root = RootLength(path);
    std::string resolved(path.substr(0, root));
    std::vector<std::size_t> names;  // where the names that ".." can take back begin
    for (std::size_t begin = root; begin < path.size();) {
        const std::size_t end = std::min(path.find_first_of(kSlashes, begin), path.size());
        const std::string_view name = path.substr(begin, end - begin);
        if (name == ".." && !names.empty()) {
            resolved.resize(names.back());
            names.pop_back();
        } else if (name == ".." ? root == 0 : !name.empty() && name != ".") {
            if (name != "..") {
                names.push_back(resolved.size());
            }
            resolved += path.substr(begin, end + 1 - begin);
        }
        begin = end + 1;
    }
    return resolved;
}

eName::eName(const char* path) : text(path != nullptr ? path : "") {
    NormalizeName(text);
}
eName::eName(const std::string& path) : text(path) {
    NormalizeName(text);
}
eName::eName(std::string_view path) : text(path) {
    NormalizeName(text);
}

eName& eName::Append(std::string_view raw) {
    text += raw;
    return *this;
}

eName& eName::Join(const eName& right) {
    const bool slashOnRight = right.text.starts_with('/');
    if (slashOnRight && text.ends_with('/')) {
        text.pop_back();
    } else if (!slashOnRight && !text.ends_with('/')) {
        text += '/';
    }
    text += right.text;
    return *this;
}

eName eName::Part(ePart kind) const {
    const std::size_t slash = text.rfind('/');
    const std::size_t nameBegin = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t dot = text.rfind('.');
    const std::size_t nameEnd = dot == std::string::npos || dot < nameBegin ? text.size() : dot;
    eName part;
    switch (kind) {
        case Folder:
            part.text = text.substr(0, nameBegin);
            break;
        case Title:
            part.text = text.substr(nameBegin, nameEnd - nameBegin);
            break;
        case Extension:
            part.text = text.substr(nameEnd);
            break;
        case WithoutExtension:
            part.text = text.substr(0, nameEnd);
            break;
        case FileName:
            part.text = text.substr(nameBegin);
            break;
    }
    return part;
}

bool eName::TrimRoot(const eName& root) {
    if (!text.starts_with(root.text)) {
        Warn(__FILE__, __LINE__,
             (format("Cannot trim root \"%1%\" from path \"%2%\"") % root.text % text).Text());
        return false;
    }
    text.erase(0, root.text.size());
    return true;
}

eName operator/(const eName& left, const eName& right) {
    return eName(left).Join(right);
}
