#include "standalone/loaders/json/json_layout.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace standalone {
namespace {

constexpr std::size_t kLineWidth = 100;
constexpr std::size_t kIndent = 2;
// Entries up to this width share the lines of a list.
constexpr std::size_t kShortEntry = 60;

bool IsOpening(char byte) {
    return byte == '{' || byte == '[';
}

bool IsClosing(char byte) {
    return byte == '}' || byte == ']';
}

// The offset behind the text, number or word that begins at the offset.
std::size_t EndOfScalar(std::string_view json, std::size_t offset) {
    if (json[offset] != '"') {
        return std::min(json.size(), json.find_first_of(",:]}", offset));
    }
    for (++offset; json[offset] != '"'; ++offset) {
        offset += json[offset] == '\\' ? 1 : 0;
    }
    return offset + 1;
}

// The width of each object and list on one line, blanks behind commas and colons counted, in the order of
// their opening brackets.
std::vector<std::size_t> MeasureFlatWidths(std::string_view json) {
    std::vector<std::size_t> widths;
    std::vector<std::size_t> open;
    std::size_t column = 0;
    for (std::size_t offset = 0; offset < json.size();) {
        const char byte = json[offset];
        if (IsOpening(byte)) {
            open.push_back(widths.size());
            widths.push_back(column);
        } else if (IsClosing(byte)) {
            std::size_t& width = widths[open.back()];
            width = column + 1 - width;
            open.pop_back();
        } else if (byte == ',' || byte == ':') {
            ++column;
        } else {
            const std::size_t end = EndOfScalar(json, offset);
            column += end - offset;
            offset = end;
            continue;
        }
        ++column;
        ++offset;
    }
    return widths;
}

// Writes the text bracket by bracket, deciding at each opening bracket how its entries stand.
class eLayout {
public:
    explicit eLayout(std::string_view compact) : json(compact), widths(MeasureFlatWidths(compact)) {}

    std::string Write() {
        for (std::size_t offset = 0; offset < json.size();) {
            offset = WriteToken(offset);
        }
        text += '\n';
        return std::move(text);
    }

private:
    enum class eMode { Flat, Lines, Filled };

    std::size_t WriteToken(std::size_t offset) {
        const char byte = json[offset];
        if (IsOpening(byte)) {
            Open(byte);
        } else if (IsClosing(byte)) {
            Close(byte);
        } else if (byte == ',') {
            text += ',';
            Separate(offset + 1);
        } else if (byte == ':') {
            text += ": ";
        } else {
            const std::size_t end = EndOfScalar(json, offset);
            text += json.substr(offset, end - offset);
            return end;
        }
        return offset + 1;
    }

    void Open(char bracket) {
        const std::size_t width = widths[nextWidth++];
        const bool isFlat = (!modes.empty() && modes.back() == eMode::Flat) || Column() + width < kLineWidth;
        text += bracket;
        modes.push_back(isFlat ? eMode::Flat : bracket == '[' ? eMode::Filled : eMode::Lines);
        if (!isFlat) {
            BreakLine();
        }
    }

    void Close(char bracket) {
        const eMode mode = modes.back();
        modes.pop_back();
        if (mode != eMode::Flat) {
            BreakLine();
        }
        text += bracket;
    }

    // `entry` is the offset of the one to come.
    void Separate(std::size_t entry) {
        const bool sharesLine =
            modes.back() == eMode::Flat || (modes.back() == eMode::Filled && FitsOnLine(entry));
        if (sharesLine) {
            text += ' ';
        } else {
            BreakLine();
        }
    }

    bool FitsOnLine(std::size_t entry) const {
        if (json[entry] == '{') {
            return false;
        }
        const std::size_t width = json[entry] == '[' ? widths[nextWidth] : EndOfScalar(json, entry) - entry;
        return width <= kShortEntry && Column() + 1 + width < kLineWidth;
    }

    void BreakLine() {
        text += '\n';
        lineStart = text.size();
        text.append(kIndent * modes.size(), ' ');
    }

    std::size_t Column() const { return text.size() - lineStart; }

    std::string_view json;
    std::vector<std::size_t> widths;
    std::size_t nextWidth = 0;
    std::vector<eMode> modes;  // of the brackets that are open
    std::string text;
    std::size_t lineStart = 0;
};

}  // namespace

std::string LayOutJson(std::string_view compact) {
    return eLayout(compact).Write();
}

}  // namespace standalone
