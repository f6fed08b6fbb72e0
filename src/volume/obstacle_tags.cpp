#include "volume/obstacle_tags.h"

#include <algorithm>
#include <string>

#include "base/number_text.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/prop_text.h"
#include "scene/properties/told_values.h"

namespace {

using xIo::xSdl::eWriter;

// What can happen to a volume, in the order of the file.
constexpr const char* kAbilities[] = {"visible", "bullet", "overlap", "contact", "contact_ground", "blast",
                                      "select",  "hole",   "holed",   "touch",   "float",          "window"};

// {key "word" "word"}: the words of the value, which "," and LF part.
void WriteTags(eWriter& writer, const host::INode& node) {
    if (!HasUserProp(node, "Tags")) {
        return;
    }
    std::string value;
    node.GetUserPropString("Tags", value);
    constexpr const char* kSeparators = ",\n";
    writer.BlockBegin().Word("tags");
    for (std::size_t begin = value.find_first_not_of(kSeparators); begin != std::string::npos;) {
        const std::size_t end = std::min(value.find_first_of(kSeparators, begin), value.size());
        writer.String(std::string_view(value).substr(begin, end - begin));
        begin = value.find_first_not_of(kSeparators, end);
    }
    writer.BlockEndLine();
}

// {word "value"}, also with an empty value.
void WriteText(eWriter& writer, ePropText& properties, const char* key, const char* word) {
    if (properties.Find(key)) {
        writer.BlockBegin().Word(word).String(properties.Value()).BlockEndLine();
    }
}

// {word}
void WriteMark(eWriter& writer, ePropText& properties, const char* key, const char* word) {
    if (properties.Find(key)) {
        writer.BlockBegin().Word(word).BlockEndLine();
    }
}

void WriteZoneTags(eWriter& writer, const host::INode& node, ePropText& properties) {
    WriteTags(writer, node);
    WriteText(writer, properties, "Proper", "proper");
    WriteText(writer, properties, "Permit", "permit");
    WriteMark(writer, properties, "Rotate", "rotate");
    WriteMark(writer, properties, "Move", "move");
    WriteMark(writer, properties, "Static", "static");
}

void WriteComponent(eWriter& writer, ePropText& properties) {
    if (properties.Find("Volume") && !properties.Value().empty()) {
        writer.BlockBegin().Word("component").String(properties.Value()).BlockEndLine();
    }
}

void WriteThickness(Export& run, const host::INode& node) {
    if (!HasUserProp(node, "Thickness")) {
        return;
    }
    std::string value;
    node.GetUserPropString("Thickness", value);
    std::ranges::replace(value, ',', ' ');
    if (CheckWord(run, node, "Thickness", value)) {
        run.texts->defWriter->BlockBegin().Word("thickness").Word(value).BlockEndLine();
    }
}

// A volume that nothing can happen to in the game has no block.
void WriteAbilities(Export& run, const host::INode& node, ePropText& properties) {
    eWriter& writer = *run.texts->defWriter;
    writer.BlockBegin().Word("able").DropIfEmpty();
    if (properties.Find("Clear")) {
        writer.Word("clear");
    }
    for (const char* key : kAbilities) {
        if (!properties.Find(key)) {
            continue;
        }
        writer.BlockBegin().Word(key);
        if (const std::string value(properties.Value()); !value.empty() && CheckWord(run, node, key, value)) {
            writer.Word(value);
        }
        writer.BlockEnd();
    }
    if (properties.Find("obstacle")) {
        const std::string_view value = properties.Value();
        if (!value.empty() && ReadInteger(value) == 0) {
            writer.BlockBegin().Word("obstacle").Integer(0).BlockEnd();
        }
    }
    writer.BlockEndLine();
}

void TellBadValues(Export& run, const host::INode& node, bool isVolume) {
    if (isVolume) {
        TellBadValue(run, node, "Volume");
    } else {
        TellBadValue(run, node, "Proper");
        TellBadValue(run, node, "Permit");
    }
}

}  // namespace

void WriteObstacleTags(Export& run, const host::INode& node, bool isVolume) {
    TellBadValues(run, node, isVolume);
    const std::string text = NormalizeUserProps(node, false);
    ePropText properties(text);
    if (!isVolume) {
        WriteZoneTags(*run.texts->mdlWriter, node, properties);
        return;
    }
    WriteTags(*run.texts->defWriter, node);
    WriteComponent(*run.texts->defWriter, properties);
    WriteThickness(run, node);
    WriteAbilities(run, node, properties);
}
