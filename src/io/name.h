// Resource names: every file and resource path in one canonical spelling, lower case with forward slashes, so
// that paths can be compared as plain text.
#pragma once

#include <compare>
#include <string>
#include <string_view>

// In place: A to Z become a to z, backslashes become slashes. Other bytes stay, so Cyrillic keeps its case.
void NormalizeName(std::string& text);

// A path without "." and ".." and without doubled slashes, worked out from its text alone, so that a place
// has one spelling. Slashes of either kind stay what they are; what leads above a root is left out, and what
// leads above the start of a relative path stays in front.
std::string ResolveDots(std::string_view path);

class eName {
public:
    enum ePart {
        Folder,            // everything up to and with the last slash; empty without one
        Title,             // behind the last slash, up to the last dot of the whole path, if it stands behind
        Extension,         // from the last dot behind the last slash; empty without one
        WithoutExtension,  // everything before Extension
        FileName,          // behind the last slash
    };

    eName() = default;
    eName(const char* path);  // normalised; null gives the empty name
    eName(const std::string& path);
    eName(std::string_view path);

    const std::string& Text() const { return text; }
    const char* c_str() const { return text.c_str(); }
    operator const std::string&() const { return text; }
    bool IsEmpty() const { return text.empty(); }

    // Adds the bytes as they are; the caller keeps the spelling canonical.
    eName& Append(std::string_view raw);
    // This path and a path below it, with exactly one slash where they meet (an empty right side ends in
    // one).
    eName& Join(const eName& right);
    eName Part(ePart kind) const;
    // Cuts the prefix. False, with a warning, if the path does not begin with it.
    bool TrimRoot(const eName& root);

    friend bool operator==(const eName&, const eName&) = default;
    friend std::strong_ordering operator<=>(const eName&, const eName&) = default;

private:
    std::string text;
};

// eName / eName joins into a new name.
eName operator/(const eName& left, const eName& right);
