#include "standalone/loaders/json/json_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/ansi.h"
#include "platform/path_text.h"

namespace standalone {
namespace {

// Single precision keeps the squared length of a unit quaternion within this.
constexpr double kUnitTolerance = 5e-7;

ePhrase KindName(eJsonKind kind) {
    switch (kind) {
        case eJsonKind::Null:
            return ePhrase::JsonNull;
        case eJsonKind::Boolean:
            return ePhrase::JsonTruth;
        case eJsonKind::Integer:
        case eJsonKind::Real:
            return ePhrase::JsonNumber;
        case eJsonKind::Text:
            return ePhrase::JsonString;
        case eJsonKind::Array:
            return ePhrase::JsonList;
        case eJsonKind::Object:
            break;
    }
    return ePhrase::JsonObject;
}

std::string CharacterName(char32_t character) {
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
    return name;
}

// The names of the nodes around the value, from the topmost down: objects in lists of nodes or of children.
std::string NodePath(const eJsonTree& tree, eJsonIndex value) {
    std::string path;
    for (; value != kJsonRoot; value = tree.values[value].parent) {
        const eJsonIndex list = tree.values[value].parent;
        const bool isNode =
            !tree.values[value].isMember && (tree.Key(list) == "nodes" || tree.Key(list) == "children");
        const eJsonIndex name =
            isNode && tree.Is(value, eJsonKind::Object) ? tree.FindMember(value, "name") : kNoJson;
        if (name != kNoJson && tree.Is(name, eJsonKind::Text)) {
            path = std::string(tree.Text(name)) + (path.empty() ? "" : "/") + path;
        }
    }
    return path;
}

bool IsPlainAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<signed char>(byte) > 0; });
}

}  // namespace

std::vector<eLoadMessage> eJsonReader::Problems() const {
    std::vector<eReport> all = reports;
    for (const eJsonIndex member : tree.repeatedMembers) {
        all.push_back({member, eMessageId::DocumentRepeatedKey, Utf8Text(eMessageId::DocumentRepeatedKey)});
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const eReport& left, const eReport& right) { return left.place < right.place; });
    std::vector<eLoadMessage> problems;
    problems.reserve(all.size());
    for (eReport& report : all) {
        problems.push_back(
            {report.id, tree.PathOf(report.place), std::move(report.text), NodePath(tree, report.place)});
    }
    return problems;
}

bool eJsonReader::ReportKind(eJsonIndex value, ePhrase expected) {
    Report(value, eMessageId::DocumentKind, Utf8Words(expected), Utf8Words(KindName(tree.Kind(value))));
    return false;
}

bool eJsonReader::Expect(eJsonIndex value, eJsonKind kind) {
    return tree.Is(value, kind) || ReportKind(value, KindName(kind));
}

bool eJsonReader::ExpectCount(eJsonIndex list, std::size_t count) {
    if (!Expect(list, eJsonKind::Array)) {
        return false;
    }
    if (tree.Count(list) == count) {
        return true;
    }
    Report(list, eMessageId::DocumentLength, count, tree.Count(list));
    return false;
}

eJsonChildren eJsonReader::Elements(eJsonIndex list) {
    const bool isList = list != kNoJson && Expect(list, eJsonKind::Array);
    return isList ? tree.Children(list) : tree.NoChildren();
}

eJsonChildren eJsonReader::Elements(eJsonIndex list, std::size_t count) {
    const bool isList = list != kNoJson && ExpectCount(list, count);
    return isList ? tree.Children(list) : tree.NoChildren();
}

eJsonChildren eJsonReader::Entries(eJsonIndex object) {
    const bool isObject = object != kNoJson && Expect(object, eJsonKind::Object);
    return isObject ? tree.Children(object) : tree.NoChildren();
}

bool eJsonReader::Read(eJsonIndex value, bool& field) {
    if (!Expect(value, eJsonKind::Boolean)) {
        return false;
    }
    field = tree.values[value].isTrue;
    return true;
}

bool eJsonReader::Read(eJsonIndex value, float& field) {
    if (!tree.IsNumber(value)) {
        return ReportKind(value, ePhrase::JsonNumber);
    }
    const std::optional<float> number = tree.Float(value);
    if (!number) {
        Report(value, eMessageId::DocumentNumberTooLarge);
        return false;
    }
    field = *number;
    return true;
}

bool eJsonReader::Read(eJsonIndex value, double& field) {
    const std::optional<double> number = tree.Double(value);
    if (!number) {
        return ReportKind(value, ePhrase::JsonNumber);
    }
    field = *number;
    return true;
}

std::optional<double> eJsonReader::ReadWhole(eJsonIndex value) {
    const std::optional<double> number = tree.Double(value);
    if (!number) {
        ReportKind(value, ePhrase::JsonWhole);
        return std::nullopt;
    }
    if (*number != std::floor(*number)) {
        Report(value, eMessageId::DocumentExpected, Utf8Words(ePhrase::JsonWhole));
        return std::nullopt;
    }
    return number;
}

bool eJsonReader::ReadWithin(eJsonIndex value, std::int64_t lowest, std::int64_t highest,
                             std::int64_t& field) {
    const std::optional<double> number = ReadWhole(value);
    if (!number) {
        return false;
    }
    if (*number < static_cast<double>(lowest) || *number > static_cast<double>(highest)) {
        Report(value, eMessageId::DocumentRange, lowest, highest);
        return false;
    }
    field = static_cast<std::int64_t>(*number);
    return true;
}

bool eJsonReader::ReadIndex(eJsonIndex value, std::size_t count, std::int64_t& field, bool isNoneAllowed) {
    const std::optional<double> number = ReadWhole(value);
    if (!number) {
        return false;
    }
    if (*number < (isNoneAllowed ? -1 : 0) || *number >= static_cast<double>(count)) {
        Report(value, eMessageId::DocumentIndex, count);
        return false;
    }
    field = static_cast<std::int64_t>(*number);
    return true;
}

bool eJsonReader::Read(eJsonIndex value, int& field) {
    std::int64_t number = 0;
    if (!ReadWithin(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), number)) {
        return false;
    }
    field = static_cast<int>(number);
    return true;
}

bool eJsonReader::Read(eJsonIndex value, std::uint32_t& field) {
    std::int64_t number = 0;
    if (!ReadWithin(value, 0, std::numeric_limits<std::uint32_t>::max(), number)) {
        return false;
    }
    field = static_cast<std::uint32_t>(number);
    return true;
}

bool eJsonReader::Read(eJsonIndex value, std::string& field) {
    return Expect(value, eJsonKind::Text) && ReadAnsi(value, tree.Text(value), field);
}

bool eJsonReader::ReadKey(eJsonIndex member, std::string& field) {
    return ReadAnsi(member, tree.Key(member), field);
}

bool eJsonReader::ReadPath(eJsonIndex value, std::string& field) {
    const bool isText = Expect(value, eJsonKind::Text);
    const std::optional<std::string> path =
        isText ? platform::PathTextFromUtf8(tree.Text(value)) : std::nullopt;
    if (!path || path->find('\0') != std::string::npos) {
        return isText && ReadAnsi(value, tree.Text(value), field);
    }
    field = *path;
    return true;
}

bool eJsonReader::ReadAnsi(eJsonIndex place, std::string_view utf8, std::string& field) {
    if (IsPlainAscii(utf8)) {
        field = utf8;
        return true;
    }
    if (utf8.find('\0') != std::string_view::npos) {
        Report(place, eMessageId::DocumentZeroCharacter);
        return false;
    }
    eFromUtf8 converted = FromUtf8(utf8);
    if (!converted.IsExact()) {
        const platform::eUtf8Step step = platform::ReadUtf8(utf8.substr(converted.badOffset));
        Report(place, eMessageId::DocumentForeignCharacter, CharacterName(step.character),
               converted.badOffset);
        return false;
    }
    field = std::move(converted.text);
    return true;
}

bool eJsonReader::ReadNumbers(eJsonIndex value, std::span<float> numbers) {
    if (!ExpectCount(value, numbers.size())) {
        return false;
    }
    bool isGood = true;
    std::size_t position = 0;
    for (const eJsonIndex element : tree.Children(value)) {
        isGood = Read(element, numbers[position++]) && isGood;
    }
    return isGood;
}

bool eJsonReader::Read(eJsonIndex value, host::Point2& field) {
    std::array<float, 2> numbers{};
    if (!ReadNumbers(value, numbers)) {
        return false;
    }
    field = {numbers[0], numbers[1]};
    return true;
}

bool eJsonReader::Read(eJsonIndex value, host::Point3& field) {
    std::array<float, 3> numbers{};
    if (!ReadNumbers(value, numbers)) {
        return false;
    }
    field = {numbers[0], numbers[1], numbers[2]};
    return true;
}

bool eJsonReader::Read(eJsonIndex value, host::Color& field) {
    host::Point3 color;
    if (!Read(value, color)) {
        return false;
    }
    for (int i = 0; i < 3; ++i) {
        if (color[i] < 0 || color[i] > 1) {
            Report(value, eMessageId::DocumentColor);
            return false;
        }
    }
    field = {color.x, color.y, color.z};
    return true;
}

bool eJsonReader::Read(eJsonIndex value, host::ClassId& field) {
    std::vector<std::uint32_t> words;
    if (!ExpectCount(value, 2) || !Read(value, words)) {
        return false;
    }
    field = {words[0], words[1]};
    return true;
}

bool eJsonReader::Read(eJsonIndex value, host::Matrix3& field) {
    std::array<float, 12> numbers{};
    if (!ReadNumbers(value, numbers)) {
        return false;
    }
    for (int row = 0; row < 4; ++row) {
        const float* const start = numbers.data() + row * 3;
        field.SetRow(row, {start[0], start[1], start[2]});
    }
    return true;
}

bool eJsonReader::Read(eJsonIndex value, eRotation& field) {
    std::array<float, 4> parts{};
    if (!ReadNumbers(value, parts)) {
        return false;
    }
    double squares = 0;
    for (const float part : parts) {
        squares += static_cast<double>(part) * part;
    }
    if (squares == 0) {
        Report(value, eMessageId::DocumentRotation);
        return false;
    }
    if (std::fabs(squares - 1) > kUnitTolerance) {
        const double length = std::sqrt(squares);
        for (float& part : parts) {
            part = static_cast<float>(part / length);
        }
    }
    field = {parts[0], parts[1], parts[2], parts[3]};
    return true;
}

bool eJsonReader::ReadWord(eJsonIndex value, std::span<const std::string_view> words, int& field) {
    if (!Expect(value, eJsonKind::Text)) {
        return false;
    }
    const auto word = std::find(words.begin(), words.end(), tree.Text(value));
    if (word != words.end()) {
        field = static_cast<int>(word - words.begin());
        return true;
    }
    std::string known;
    for (const std::string_view each : words) {
        known += (known.empty() ? "\"" : ", \"") + std::string(each) + '"';
    }
    Report(value, eMessageId::DocumentUnknownWord, tree.Text(value), known);
    return false;
}

bool eJsonReader::ReadType(eJsonIndex object, std::span<const std::string_view> words, int& type) {
    if (!Expect(object, eJsonKind::Object)) {
        return false;
    }
    const eJsonIndex word = tree.FindMember(object, "type");
    if (word == kNoJson) {
        Report(object, eMessageId::DocumentMissingKey, "type");
        return false;
    }
    tree.values[word].isRead = true;
    return ReadWord(word, words, type);
}

eMembers::eMembers(eJsonReader& documentReader, eJsonIndex value)
    : reader(documentReader), object(value), isObject(documentReader.Expect(value, eJsonKind::Object)) {}

eMembers::~eMembers() {
    if (!isObject || !isUnreadReported) {
        return;
    }
    for (const eJsonIndex member : reader.Tree().Children(object)) {
        if (!reader.Tree().values[member].isRead) {
            reader.Report(member, eMessageId::DocumentUnknownKey);
        }
    }
}

eJsonIndex eMembers::Find(std::string_view key) {
    eJsonIndex found = kNoJson;
    if (!isObject) {
        return found;
    }
    for (const eJsonIndex member : reader.Tree().Children(object)) {
        if (reader.Tree().Key(member) == key) {
            reader.Tree().values[member].isRead = true;
            found = found == kNoJson ? member : found;
        }
    }
    return found;
}

eJsonIndex eMembers::Demand(std::string_view key) {
    const eJsonIndex value = Find(key);
    if (value == kNoJson && isObject) {
        reader.Report(object, eMessageId::DocumentMissingKey, key);
    }
    return value;
}

bool eMembers::Optional(std::string_view key, std::int64_t lowest, std::int64_t highest, int& field) {
    const eJsonIndex value = Find(key);
    std::int64_t number = 0;
    if (value == kNoJson || !reader.ReadWithin(value, lowest, highest, number)) {
        return false;
    }
    field = static_cast<int>(number);
    return true;
}

bool eMembers::RequiredSize(std::string_view key, float& field) {
    const eJsonIndex value = Demand(key);
    if (value == kNoJson || !reader.Read(value, field)) {
        return false;
    }
    if (field < 0) {
        reader.Report(value, eMessageId::DocumentSize);
        return false;
    }
    return true;
}

}  // namespace standalone
