#include "inspect/description.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace inspect {

namespace {

using eRow = std::vector<std::string>;

std::size_t CharacterCount(const std::string& utf8) {
    return static_cast<std::size_t>(
        std::ranges::count_if(utf8, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::string ScalarText(const eDescription& value) {
    if (value.is_string()) {
        return value.get<std::string>();
    }
    return value.is_boolean() ? (value.get<bool>() ? "yes" : "no") : value.is_null() ? "-" : value.dump();
}

bool IsInline(const eDescription& value) {
    return !value.is_structured() ||
           (value.is_array() && std::ranges::none_of(value, [](const auto& e) { return e.is_structured(); }));
}

std::string InlineText(const eDescription& value) {
    if (!value.is_array()) {
        return ScalarText(value);
    }
    std::string text;
    for (const eDescription& element : value) {
        text += (text.empty() ? "" : " ") + ScalarText(element);
    }
    return text.empty() ? "none" : text;
}

// A list of objects that have the same members, each of which fits a cell.
bool IsTable(const eDescription& list) {
    const auto hasCells = [](const eDescription& row) {
        return row.is_object() && std::ranges::all_of(row, [](const auto& cell) { return IsInline(cell); });
    };
    const auto isLikeFirst = [&](const eDescription& row) {
        return row.size() == list.front().size() && std::ranges::all_of(row.items(), [&](const auto& member) {
                   return list.front().contains(member.key());
               });
    };
    return list.size() > 1 && std::ranges::all_of(list, hasCells) && std::ranges::all_of(list, isLikeFirst);
}

void RenderTable(const eDescription& list, const std::string& indent, std::string& out) {
    std::vector<eRow> rows(1);
    for (const auto& member : list.front().items()) {
        rows.front().push_back(member.key());
    }
    for (const eDescription& object : list) {
        eRow row;
        for (const std::string& key : rows.front()) {
            row.push_back(InlineText(object.at(key)));
        }
        rows.push_back(std::move(row));
    }
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const eRow& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], CharacterCount(row[column]));
        }
    }
    for (const eRow& row : rows) {
        std::string line = indent;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column] + std::string(widths[column] - CharacterCount(row[column]) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out += line + "\n";
    }
}

void RenderValue(const eDescription& value, const std::string& indent, std::string& out);

void RenderMember(const std::string& name, const eDescription& value, const std::string& indent,
                  std::string& out) {
    if (IsInline(value)) {
        out += indent + name + ": " + InlineText(value) + "\n";
        return;
    }
    out += indent + name + ":\n";
    RenderValue(value, indent + "  ", out);
}

void RenderList(const eDescription& list, const std::string& indent, std::string& out) {
    if (IsTable(list)) {
        RenderTable(list, indent, out);
        return;
    }
    for (const eDescription& element : list) {
        std::string block;
        RenderValue(element, indent + "  ", block);
        block.replace(indent.size(), 1, "-");
        out += block;
    }
}

void RenderValue(const eDescription& value, const std::string& indent, std::string& out) {
    if (value.is_array() && !IsInline(value)) {
        RenderList(value, indent, out);
    } else if (value.is_object()) {
        for (const auto& member : value.items()) {
            RenderMember(member.key(), member.value(), indent, out);
        }
    } else {
        out += indent + InlineText(value) + "\n";
    }
}

}  // namespace

double ShownMetres(float metres) {
    return std::round(metres * 1e4) / 1e4;
}

std::string RenderText(const eDescription& description) {
    std::string out;
    RenderValue(description, "", out);
    return out;
}

}  // namespace inspect
