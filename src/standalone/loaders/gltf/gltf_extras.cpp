#include "standalone/loaders/gltf/gltf_extras.h"

#include <algorithm>
#include <vector>

#include "base/ansi.h"
#include "standalone/data/property_lines.h"
#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/shared/short_number.h"

namespace standalone {
namespace {

class eNodeExtras {
public:
    eNodeExtras(const eJsonTree& document, eImportReport& ownReport, eNodeData& node)
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

    eShapeWord shape = eShapeWord::None;

private:
    void Lose(eJsonIndex value) { report.Notice(eMessageId::ImportLostExtras, json.PathOf(value)); }

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
        } else if (!json.Is(value, eJsonKind::Text) || !ReadGroupWord(json.Text(value), record)) {
            Lose(value);
        }
    }

    void ReadShape(eJsonIndex value) {
        shape = json.Is(value, eJsonKind::Text) ? ShapeOfWord(json.Text(value)) : eShapeWord::None;
        if (shape == eShapeWord::None) {
            Lose(value);
        }
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
        if (json.Key(member) == kWholeTextKey) {
            AppendPropertyLine(record.properties,
                               PropertyTextOf(json.Text(member), ToUtf8(record.name), report));
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
        AppendPropertyLine(record.properties, PropertyLineOf(key, value, ToUtf8(record.name), report));
    }

    const eJsonTree& json;
    eImportReport& report;
    eNodeData& record;
};

}  // namespace

eShapeWord ReadNodeExtras(const eJsonTree& json, eJsonIndex node, eImportReport& report, eNodeData& record) {
    const eJsonIndex extras = json.FindMember(node, "extras");
    if (extras == kNoJson) {
        return eShapeWord::None;
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

}  // namespace standalone
