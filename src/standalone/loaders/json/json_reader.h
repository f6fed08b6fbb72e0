// Typed reading of a JSON tree: whatever is not as expected becomes a problem with its place, and the field
// keeps the value it has, so that one run finds everything that is wrong with a document.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/values.h"
#include "messages/utf8_words.h"
#include "standalone/load_result.h"
#include "standalone/loaders/json/json_tree.h"
#include "standalone/scene_data.h"

namespace standalone {

class eJsonReader {
public:
    explicit eJsonReader(eJsonTree& document) : tree(document) {}

    eJsonTree& Tree() const { return tree; }

    // Values are UTF-8.
    template <class... Values>
    void Report(eJsonIndex place, eMessageId id, const Values&... values) {
        reports.push_back({place, id, Utf8Text(id, values...)});
    }
    // Everything reported so far and the repeated members of the tree, in the order of the document.
    std::vector<eLoadMessage> Problems() const;

    // Each gives false, with a problem, for a value that does not fit.
    bool Read(eJsonIndex value, bool& field);
    bool Read(eJsonIndex value, float& field);
    bool Read(eJsonIndex value, double& field);
    // A number without fraction, spelled 1 or 1.0.
    bool Read(eJsonIndex value, int& field);
    bool Read(eJsonIndex value, std::uint32_t& field);
    // In code page 1251; without zero characters, at which the host would end the text.
    bool Read(eJsonIndex value, std::string& field);
    bool Read(eJsonIndex value, host::Point2& field);
    bool Read(eJsonIndex value, host::Point3& field);
    // Each component 0 to 1.
    bool Read(eJsonIndex value, host::Color& field);
    bool Read(eJsonIndex value, host::ClassId& field);
    // Twelve numbers, four rows of three.
    bool Read(eJsonIndex value, host::Matrix3& field);
    // [x, y, z, w], brought to length 1; one that has length 1 within rounding stays as written.
    bool Read(eJsonIndex value, eRotation& field);
    template <class Item>
    bool Read(eJsonIndex value, std::optional<Item>& field) {
        return Read(value, field.emplace());
    }
    template <class Item>
    bool Read(eJsonIndex value, std::vector<Item>& field);

    // A path of the machine, in any alphabet (platform/path_text.h).
    bool ReadPath(eJsonIndex value, std::string& field);
    // A number without fraction from `lowest` to `highest`, both small enough for a double to count exactly.
    bool ReadWithin(eJsonIndex value, std::int64_t lowest, std::int64_t highest, std::int64_t& field);
    // The number of an entry in a table of `count` entries; -1 too where `isNoneAllowed`.
    bool ReadIndex(eJsonIndex value, std::size_t count, std::int64_t& field, bool isNoneAllowed = false);
    // A list of just as many numbers.
    bool ReadNumbers(eJsonIndex value, std::span<float> numbers);
    // One of the words; the field becomes its number in the list.
    bool ReadWord(eJsonIndex value, std::span<const std::string_view> words, int& field);
    // The key of a member as bytes of code page 1251.
    bool ReadKey(eJsonIndex member, std::string& field);

    // The same for the member "type" of an object, which must be there. With an unknown type nobody can say
    // which other keys belong to the object.
    bool ReadType(eJsonIndex object, std::span<const std::string_view> words, int& type);

    // The values of a list, the members of an object; none for kNoJson, and none, with a problem, for another
    // kind of value or number of elements.
    eJsonChildren Elements(eJsonIndex list);
    eJsonChildren Elements(eJsonIndex list, std::size_t count);
    eJsonChildren Entries(eJsonIndex object);

    // Reports a value that is not of the kind.
    bool Expect(eJsonIndex value, eJsonKind kind);
    bool ExpectCount(eJsonIndex list, std::size_t count);

private:
    struct eReport {
        eJsonIndex place = kJsonRoot;
        eMessageId id;
        eBilingual text;
    };

    bool ReportKind(eJsonIndex value, ePhrase expected);
    std::optional<double> ReadWhole(eJsonIndex value);
    bool ReadAnsi(eJsonIndex place, std::string_view utf8, std::string& field);

    eJsonTree& tree;
    std::vector<eReport> reports;
};

template <class Item>
bool eJsonReader::Read(eJsonIndex value, std::vector<Item>& field) {
    if (!Expect(value, eJsonKind::Array)) {
        return false;
    }
    field.resize(tree.Count(value));
    bool isGood = true;
    std::size_t position = 0;
    for (const eJsonIndex element : tree.Children(value)) {
        isGood = Read(element, field[position++]) && isGood;
    }
    return isGood;
}

// The members of one object of the document. Whoever reads asks for each member that the object may have; the
// end of the eMembers reports those that nobody has asked for.
class eMembers {
public:
    // A value that is no object is reported, and has no members.
    eMembers(eJsonReader& documentReader, eJsonIndex value);
    eMembers(const eMembers&) = delete;
    eMembers& operator=(const eMembers&) = delete;
    ~eMembers();

    eJsonIndex Object() const { return object; }
    bool IsObject() const { return isObject; }

    // From here on members that nobody asks for go without report.
    void LeaveUnread() { isUnreadReported = false; }

    // The value of the key, or kNoJson.
    eJsonIndex Find(std::string_view key);
    // The same, and a missing member is reported.
    eJsonIndex Demand(std::string_view key);

    // True if the member is there and could be read; a missing member leaves the field as it is.
    bool OptionalPath(std::string_view key, std::string& field) {
        const eJsonIndex value = Find(key);
        return value != kNoJson && reader.ReadPath(value, field);
    }
    template <class Field>
    bool Optional(std::string_view key, Field& field) {
        const eJsonIndex value = Find(key);
        return value != kNoJson && reader.Read(value, field);
    }
    template <class Field>
    bool Required(std::string_view key, Field& field) {
        const eJsonIndex value = Demand(key);
        return value != kNoJson && reader.Read(value, field);
    }
    // Whole numbers within bounds.
    bool Optional(std::string_view key, std::int64_t lowest, std::int64_t highest, int& field);
    // A length: 0 or more.
    bool RequiredSize(std::string_view key, float& field);

private:
    eJsonReader& reader;
    eJsonIndex object;
    bool isObject;
    bool isUnreadReported = true;
};

}  // namespace standalone
