#include "standalone/loaders/gltf/gltf_extras.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "base/ansi.h"
#include "standalone/data/property_lines.h"
#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {
namespace {

bool IsTextOf(const eJsonTree& json, eJsonIndex value, std::string_view text) {
    return json.Is(value, eJsonKind::Text) && json.Text(value) == text;
}

// A line per member: a break inside a value would begin another property.
std::string OneLine(std::string_view utf8, eGltfReport& report) {
    std::string line(utf8);
    std::ranges::replace_if(
        line, [](char byte) { return byte == '\r' || byte == '\n' || byte == '\t'; }, ' ');
    return report.Ansi(line);
}

// A whole property text, whose lines end in CR LF in the host: one of its readers does not know a bare LF.
std::string WholeText(std::string_view utf8) {
    std::string text;
    for (const char byte : FromUtf8(utf8).text) {
        if (byte == '\n' && !text.ends_with('\r')) {
            text += '\r';
        }
        text += byte == '\0' ? '_' : byte;
    }
    return text;
}

class eNodeExtras {
public:
    eNodeExtras(const eJsonTree& document, eGltfReport& ownReport, eNodeData& node)
        : json(document), report(ownReport), record(node) {}

    void Read(eJsonIndex extras) {
        if (!json.Is(extras, eJsonKind::Object)) {
            Lose(extras);
            return;
        }
        for (const eJsonIndex member : json.Children(extras)) {
            if (!ReadState(member)) {
                ReadProperty(member);
            }
        }
    }

    eGltfShape shape = eGltfShape::None;

private:
    void Lose(eJsonIndex value) { report.Notice(eGltfNotice::LostExtra, json.PathOf(value)); }

    std::string NumberText(eJsonIndex value) const {
        return json.Is(value, eJsonKind::Integer) ? std::to_string(json.values[value].integer)
                                                  : ShortNumber(*json.Double(value));
    }

    bool ReadState(eJsonIndex member) {
        const std::string_view key = json.Key(member);
        if (key == "hidden") {
            record.hidden = ReadFlag(member);
        } else if (key == "selected") {
            record.selected = ReadFlag(member);
        } else if (key == "group") {
            ReadGroup(member);
        } else if (key == "shape") {
            ReadShape(member);
        } else {
            return false;
        }
        return true;
    }

    bool ReadFlag(eJsonIndex value) {
        const bool isNumber = json.IsNumber(value);
        if (!isNumber && !json.Is(value, eJsonKind::Boolean) && !json.Is(value, eJsonKind::Null)) {
            Lose(value);
        }
        return json.values[value].isTrue || (isNumber && json.Double(value) == 1.0);
    }

    void ReadGroup(eJsonIndex value) {
        if (json.Is(value, eJsonKind::Array)) {
            for (const eJsonIndex element : json.Children(value)) {
                ReadGroup(element);
            }
        } else if (IsTextOf(json, value, "head")) {
            record.groupHead = true;
        } else if (IsTextOf(json, value, "member")) {
            record.groupMember = true;
        } else {
            Lose(value);
        }
    }

    void ReadShape(eJsonIndex value) {
        constexpr std::array<std::string_view, 4> kWords = {"", "box", "sphere", "cylinder"};
        for (std::size_t word = 1; word < kWords.size(); ++word) {
            if (IsTextOf(json, value, kWords[word])) {
                shape = static_cast<eGltfShape>(word);
                return;
            }
        }
        Lose(value);
    }

    void ReadProperty(eJsonIndex member) {
        switch (json.Kind(member)) {
            case eJsonKind::Text:
                ReadText(member);
                return;
            case eJsonKind::Boolean:
                if (json.values[member].isTrue) {
                    AddLine(json.Key(member), "");
                }
                return;
            case eJsonKind::Integer:
            case eJsonKind::Real:
                AddLine(json.Key(member), NumberText(member));
                return;
            case eJsonKind::Array:
                ReadList(member);
                return;
            case eJsonKind::Object:
                Lose(member);
                return;
            case eJsonKind::Null:
                return;
        }
    }

    void ReadText(eJsonIndex member) {
        if (json.Key(member) == "properties") {
            AppendPropertyLine(record.properties, WholeText(json.Text(member)));
        } else {
            AddLine(json.Key(member), json.Text(member));
        }
    }

    void ReadList(eJsonIndex list) {
        const std::vector<eJsonIndex> elements = JsonElements(json, list);
        const bool isOfTexts = std::ranges::all_of(
            elements, [&](eJsonIndex element) { return json.Is(element, eJsonKind::Text); });
        const bool isOfNumbers =
            std::ranges::all_of(elements, [&](eJsonIndex element) { return json.IsNumber(element); });
        std::string numbers;
        for (const eJsonIndex element : elements) {
            if (isOfTexts) {
                AddLine(json.Key(list), json.Text(element));
            } else if (isOfNumbers) {
                numbers += (numbers.empty() ? "" : ",") + NumberText(element);
            }
        }
        if (!isOfTexts && !isOfNumbers) {
            Lose(list);
        } else if (!numbers.empty()) {
            AddLine(json.Key(list), numbers);
        }
    }

    void AddLine(std::string_view key, std::string_view value) {
        const std::string line = OneLine(key, report);
        AppendPropertyLine(record.properties, value.empty() ? line : line + "=" + OneLine(value, report));
    }

    const eJsonTree& json;
    eGltfReport& report;
    eNodeData& record;
};

}  // namespace

eGltfShape ReadNodeExtras(const eJsonTree& json, eJsonIndex node, eGltfReport& report, eNodeData& record) {
    const eJsonIndex extras = json.FindMember(node, "extras");
    if (extras == kNoJson) {
        return eGltfShape::None;
    }
    eNodeExtras reader(json, report, record);
    reader.Read(extras);
    return reader.shape;
}

std::optional<double> ExtraNumber(const eJsonTree& json, eJsonIndex object, std::string_view key) {
    const eJsonIndex value = FindJson(json, object, {"extras", key});
    if (value == kNoJson) {
        return std::nullopt;
    }
    if (json.Is(value, eJsonKind::Boolean)) {
        return json.values[value].isTrue ? 1 : 0;
    }
    return json.Double(value);
}

std::string ShortNumber(double number) {
    std::array<char, 400> digits;  // the smallest number takes 327 characters, the largest 309
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), number + 0.0, std::chars_format::fixed);
    return {digits.data(), written.ptr};
}

}  // namespace standalone
