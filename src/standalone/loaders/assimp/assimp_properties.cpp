#include "standalone/loaders/assimp/assimp_properties.h"

#include <algorithm>
#include <array>

#include "base/ansi.h"
#include "standalone/data/property_lines.h"
#include "standalone/data/property_reader.h"
#include "standalone/loaders/shared/node_state.h"

namespace standalone {
namespace {

// What modelling programs put among the user's properties for themselves.
constexpr std::array<std::string_view, 4> kProgramKeys = {"MaxHandle", "currentUVSet", "filmboxTypeID",
                                                          "lockInfluenceWeights"};

bool IsOfTheProgram(const std::string& key) {
    return std::ranges::find(kProgramKeys, key) != kProgramKeys.end();
}

class ePropertyReader {
public:
    ePropertyReader(eImportReport& ownReport, eAssimpNode& ownNode, eNodeData& ownRecord)
        : report(ownReport), node(ownNode), record(ownRecord) {}

    void Read(const eFbxModel& facts) {
        record.hidden = !facts.isShown;
        if (!facts.propertyText.empty()) {
            record.properties = PropertyTextOf(facts.propertyText, node.name, report);
        }
        const std::string wholeText = record.properties;
        const eUserProperties told(wholeText);
        for (const eFbxProperty& property : facts.properties) {
            if (IsOfTheProgram(property.key) || ReadState(property)) {
                continue;
            }
            if (told.Find(report.Ansi(property.key))) {
                report.Notice(eMessageId::ImportToldTwice, node.name + "/" + property.key);
            } else if (!property.isFlagOff) {
                AddLines(property);
            }
        }
    }

private:
    void AddLines(const eFbxProperty& property) {
        for (const std::string& value : property.values) {
            AppendPropertyLine(record.properties,
                               property.key == kWholeTextKey
                                   ? PropertyTextOf(value, node.name, report)
                                   : PropertyLineOf(property.key, value, node.name, report));
        }
    }

    bool ReadState(const eFbxProperty& property) {
        const std::string value = property.isFlagOff ? "0" : property.values.front();
        if (property.key == "hidden") {
            record.hidden = IsOn(value);
        } else if (property.key == "selected") {
            record.selected = IsOn(value);
        } else if (property.key == "group") {
            Check(std::ranges::all_of(property.values,
                                      [&](const auto& words) { return ReadGroupWords(words); }),
                  property);
        } else if (property.key == "shape") {
            node.shape = ShapeOfWord(value);
            Check(node.shape != eShapeWord::None, property);
        } else {
            return false;
        }
        return true;
    }

    // "head", "member", or both with a comma between them.
    bool ReadGroupWords(std::string_view words) {
        bool areKnown = true;
        while (!words.empty()) {
            const std::size_t comma = std::min(words.find(','), words.size());
            areKnown = ReadGroupWord(words.substr(0, comma), record) && areKnown;
            words.remove_prefix(std::min(comma + 1, words.size()));
        }
        return areKnown;
    }

    // A switch without text is on.
    static bool IsOn(const std::string& value) { return value.empty() || value == "1" || value == "true"; }

    void Check(bool isKnown, const eFbxProperty& property) {
        if (!isKnown) {
            report.Notice(eMessageId::ImportLostExtras, node.name + "/" + property.key);
        }
    }

    eImportReport& report;
    eAssimpNode& node;
    eNodeData& record;
};

}  // namespace

void ReadAssimpProperties(eAssimpImport& import, eAssimpNode& node, eNodeData& record) {
    if (node.facts != nullptr) {
        ePropertyReader(import.report, node, record).Read(*node.facts);
    }
}

}  // namespace standalone
