#include "standalone/loaders/fbx/fbx_models.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "base/ansi.h"
#include "standalone/loaders/fbx/fbx_instances.h"
#include "standalone/loaders/fbx/fbx_listing.h"
#include "standalone/loaders/fbx/fbx_records.h"
#include "standalone/loaders/fbx/fbx_visibility.h"
#include "standalone/loaders/shared/short_number.h"

namespace standalone {
namespace {

constexpr std::string_view kBinarySeparator{"\0\1", 2};
constexpr std::string_view kTextSeparator = "::";

// By the file's number of its time mode; 0 for one of its own.
constexpr std::array<double, 19> kFrameRates = {30, 120, 100,  60,     50, 48, 30, 30,    29.97, 29.97,
                                                25, 24,  1000, 23.976, 0,  96, 72, 59.94, 119.88};

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
std::string_view NameInFile(std::string_view text) {
    if (const std::size_t binary = text.find(kBinarySeparator); binary != std::string_view::npos) {
        return text.substr(0, binary);
    }
    const std::size_t separator = text.find(kTextSeparator);
    return separator == std::string_view::npos ? text : text.substr(separator + kTextSeparator.size());
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

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : ",") + text;
    }
    return joined;
}

eFbxProperty PropertyOf(const eFbxRecord& record) {
    eFbxProperty property{InUtf8(std::string(record.Text(kKey))), {std::string()}, false};
    const std::string_view type = record.Text(kType);
    if (type == "bool" || type == "Bool") {
        property.isFlagOff = record.Whole(kFirstValue) == 0;
        return property;
    }
    std::vector<std::string> parts;
    for (std::size_t value = kFirstValue; value < record.values.size(); ++value) {
        parts.push_back(ValueText(record, value));
    }
    property.values = {Joined(parts)};
    property.isFlagOff = property.values.front() == "[]";
    if (std::optional<eFbxListing> listing = ReadFbxListing(property.values.front())) {
        property.values =
            listing->areTexts ? std::move(listing->entries) : std::vector{Joined(listing->entries)};
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
        model.visibility = record.Real(kFirstValue);
    } else if (key == "Visibility Inheritance") {
        model.hidesWithAbove = record.Whole(kFirstValue) != 0;
    }
}

std::span<const eFbxRecord> PropertiesOf(const eFbxRecord& record) {
    const eFbxRecord* properties = record.Find("Properties70");
    return properties == nullptr ? std::span<const eFbxRecord>() : properties->children;
}

eFbxModel ModelOf(const eFbxRecord& record) {
    eFbxModel model;
    model.nameInFile = NameInFile(record.Text(1));
    model.name = InUtf8(std::string(model.nameInFile));
    for (const eFbxRecord& property : PropertiesOf(record)) {
        ReadProperty(property, model);
    }
    return model;
}

eFbxTake TakeOf(const eFbxRecord& record) {
    eFbxTake take;
    take.nameInFile = NameInFile(record.Text(1));
    take.name = InUtf8(std::string(take.nameInFile));
    for (const eFbxRecord& property : PropertiesOf(record)) {
        if (property.Text(kKey) == "LocalStart") {
            take.startSeconds = property.Real(kFirstValue) / kFbxTicksPerSecond;
        } else if (property.Text(kKey) == "LocalStop") {
            take.endSeconds = property.Real(kFirstValue) / kFbxTicksPerSecond;
        }
    }
    return take;
}

double FrameRateOf(const eFbxRecord& settings) {
    double rate = 0, own = 0;
    for (const eFbxRecord& property : PropertiesOf(settings)) {
        if (property.Text(kKey) == "CustomFrameRate") {
            own = property.Real(kFirstValue);
        } else if (property.Text(kKey) == "TimeMode") {
            const auto mode = static_cast<std::size_t>(property.Whole(kFirstValue));
            rate = mode < kFrameRates.size() ? kFrameRates[mode] : 0;
        }
    }
    return rate == 0 ? own : rate;
}

void ReadObjects(const eFbxRecord& objects, eFbxModels& file, eFbxNumbers& numbers) {
    for (const eFbxRecord& record : objects.children) {
        if (record.name == "Model") {
            numbers.models.try_emplace(record.Whole(0), file.models.size());
            file.models.push_back(ModelOf(record));
        } else if (record.name == "AnimationStack") {
            numbers.takes.try_emplace(record.Whole(0), file.takes.size());
            file.takes.push_back(TakeOf(record));
        }
    }
}

// `C: "OO", child, parent`; number 0 is the root of the scene.
void ReadConnections(const eFbxRecord& connections, const eFbxNumbers& numbers, eFbxModels& file) {
    for (const eFbxRecord& record : connections.children) {
        const auto child = numbers.models.find(record.Whole(1));
        const auto parent = numbers.models.find(record.Whole(2));
        if (record.Text(0) != "OO" || child == numbers.models.end()) {
            continue;
        }
        if (parent != numbers.models.end()) {
            file.models[parent->second].children.push_back(child->second);
        } else if (record.Whole(2) == 0) {
            file.roots.push_back(child->second);
        }
    }
}

// A visibility of nothing that no take moves is a flag as good as any.
void HideForGood(eFbxModels& file) {
    std::vector<bool> isMoved(file.models.size());
    for (const eFbxTake& take : file.takes) {
        for (const auto& [model, showings] : take.showings) {
            isMoved[model] = true;
        }
    }
    for (std::size_t number = 0; number < file.models.size(); ++number) {
        eFbxModel& model = file.models[number];
        model.isShown = model.isShown && (isMoved[number] || model.visibility != 0);
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
    eFbxNumbers numbers;
    ReadObjects(*objects, file, numbers);
    ReadConnections(*connections, numbers, file);
    ReadFbxVisibility(*objects, *connections, numbers, file);
    ReadFbxInstances(*objects, *connections, numbers, file);
    HideForGood(file);
    if (const eFbxRecord* settings = root->Find("GlobalSettings")) {
        file.framesPerSecond = FrameRateOf(*settings);
    }
    return file;
}

}  // namespace standalone
