#include "standalone/loaders/fbx/fbx_models.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

#include "base/ansi.h"
#include "standalone/loaders/fbx/fbx_records.h"
#include "standalone/loaders/shared/short_number.h"

namespace standalone {
namespace {

using eNumbers = std::unordered_map<std::int64_t, std::size_t>;  // by the file's own number

constexpr std::string_view kBinarySeparator{"\0\1", 2};
constexpr std::string_view kTextSeparator = "::";
constexpr double kTicksPerSecond = 46186158000;

// Of `P: "Layer", "int", "Integer", "A+U", 2`.
constexpr std::size_t kKey = 0, kType = 1, kFlags = 3, kFirstValue = 4;

// The texts that modelling programs keep whole as one property.
constexpr std::array<std::string_view, 2> kTextKeys = {"UserProperties", "UDP3DSMAX"};

// Old writers used the code page of their machine.
std::string InUtf8(std::string text) {
    for (std::string_view rest = text; !rest.empty();) {
        const platform::eUtf8Step step = platform::ReadUtf8(rest);
        if (step.length == 0) {
            return ToUtf8(text);
        }
        rest.remove_prefix(step.length);
    }
    return text;
}

// "turret\0\1Model" in a binary file, "Model::turret" in a text file.
std::string NameOf(std::string_view text) {
    if (const std::size_t binary = text.find(kBinarySeparator); binary != std::string_view::npos) {
        return InUtf8(std::string(text.substr(0, binary)));
    }
    const std::size_t separator = text.find(kTextSeparator);
    return InUtf8(std::string(
        separator == std::string_view::npos ? text : text.substr(separator + kTextSeparator.size())));
}

std::string Replaced(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

// Line ends and quotes, as the writers of the format say them inside a text.
std::string Unescaped(std::string_view text) {
    std::string plain = Replaced(std::string(text), "&cr;", "\r");
    plain = Replaced(std::move(plain), "&lf;", "\n");
    return InUtf8(Replaced(std::move(plain), "&quot;", "\""));
}

std::string ValueText(const eFbxRecord& property, std::size_t value) {
    if (const auto* real = std::get_if<double>(&property.values[value])) {
        return std::isfinite(*real) ? ShortNumber(*real) : "0";
    }
    if (const auto* whole = std::get_if<std::int64_t>(&property.values[value])) {
        return std::to_string(*whole);
    }
    return Unescaped(property.Text(value));
}

eFbxProperty PropertyOf(const eFbxRecord& record) {
    eFbxProperty property{InUtf8(std::string(record.Text(kKey))), {}, false};
    const std::string_view type = record.Text(kType);
    if (type == "bool" || type == "Bool") {
        property.isFlagOff = record.Whole(kFirstValue) == 0;
        return property;
    }
    for (std::size_t value = kFirstValue; value < record.values.size(); ++value) {
        property.value += (value == kFirstValue ? "" : ",") + ValueText(record, value);
    }
    return property;
}

void ReadProperty(const eFbxRecord& record, eFbxModel& model) {
    const std::string_view key = record.Text(kKey);
    if (std::ranges::find(kTextKeys, key) != kTextKeys.end()) {
        const std::string text = Unescaped(record.Text(kFirstValue));
        model.propertyText += (model.propertyText.empty() || text.empty() ? "" : "\r\n") + text;
    } else if (record.Text(kFlags).find('U') != std::string_view::npos) {
        model.properties.push_back(PropertyOf(record));
    } else if (key == "InheritType") {
        model.inherit = static_cast<eFbxInherit>(std::clamp<std::int64_t>(record.Whole(kFirstValue), 0, 2));
    } else if (key == "Show") {
        model.isShown = record.Whole(kFirstValue) != 0;
    } else if (key == "Visibility") {
        model.isShown = model.isShown && record.Real(kFirstValue) != 0;
    }
}

eFbxModel ModelOf(const eFbxRecord& record) {
    eFbxModel model;
    model.name = NameOf(record.Text(1));
    if (const eFbxRecord* properties = record.Find("Properties70")) {
        for (const eFbxRecord& property : properties->children) {
            ReadProperty(property, model);
        }
    }
    return model;
}

eFbxTake TakeOf(const eFbxRecord& record) {
    eFbxTake take{NameOf(record.Text(1)), 0};
    if (const eFbxRecord* properties = record.Find("Properties70")) {
        for (const eFbxRecord& property : properties->children) {
            if (property.Text(kKey) == "LocalStart") {
                take.startSeconds = property.Real(kFirstValue) / kTicksPerSecond;
            }
        }
    }
    return take;
}

void ReadObjects(const eFbxRecord& objects, eFbxModels& file, eNumbers& numbers) {
    for (const eFbxRecord& record : objects.children) {
        if (record.name == "Model") {
            numbers.try_emplace(record.Whole(0), file.models.size());
            file.models.push_back(ModelOf(record));
        } else if (record.name == "AnimationStack") {
            file.takes.push_back(TakeOf(record));
        }
    }
}

// `C: "OO", child, parent`; number 0 is the root of the scene.
void ReadConnections(const eFbxRecord& connections, const eNumbers& numbers, eFbxModels& file) {
    for (const eFbxRecord& record : connections.children) {
        const auto child = numbers.find(record.Whole(1));
        const auto parent = numbers.find(record.Whole(2));
        if (record.Text(0) != "OO" || child == numbers.end()) {
            continue;
        }
        if (parent != numbers.end()) {
            file.models[parent->second].children.push_back(child->second);
        } else if (record.Whole(2) == 0) {
            file.roots.push_back(child->second);
        }
    }
}

}  // namespace

std::optional<eFbxModels> ReadFbxModels(std::string_view bytes) {
    const std::optional<eFbxRecord> root = ReadFbxRecords(bytes);
    const eFbxRecord* objects = root ? root->Find("Objects") : nullptr;
    const eFbxRecord* connections = root ? root->Find("Connections") : nullptr;
    if (objects == nullptr || connections == nullptr) {
        return std::nullopt;
    }
    eFbxModels file;
    eNumbers numbers;
    ReadObjects(*objects, file, numbers);
    ReadConnections(*connections, numbers, file);
    return file;
}

}  // namespace standalone
