#include "io/name.h"

#include "base/ansi.h"
#include "base/diagnostics.h"
#include "base/format.h"

void NormalizeName(std::string& text) {
    for (char& byte : text) {
        byte = byte == '\\' ? '/' : LowerAsciiByte(byte);
    }
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
