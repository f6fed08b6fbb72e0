// The kinds of files that exports write, by the ends of their names.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "base/ansi.h"

inline constexpr std::array<std::string_view, 7> kMeshKinds = {".mdl", ".def", ".mesh", ".material",
                                                               ".bmp", ".tga", ".dds"};
inline constexpr std::array<std::string_view, 2> kAnimationKinds = {".anm", "anim.txt"};

// True for a name, in lower case, of one of the kinds.
template <std::size_t Count>
bool IsOfKind(std::string_view name, const std::array<std::string_view, Count>& kinds) {
    return std::ranges::any_of(kinds, [&](std::string_view kind) { return name.ends_with(kind); });
}

// True for a name of any of the kinds, in whatever case.
inline bool IsOfExport(std::string_view name) {
    const std::string lower = LowerAnsi(std::string(name));
    return IsOfKind(lower, kMeshKinds) || IsOfKind(lower, kAnimationKinds);
}
