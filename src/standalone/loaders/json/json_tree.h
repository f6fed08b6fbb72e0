// A JSON text as a flat tree: one small record per value in the order of the text, so that a document of
// millions of values takes a few allocations and is walked without recursion.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standalone {

using eJsonIndex = std::uint32_t;

inline constexpr eJsonIndex kJsonRoot = 0;
inline constexpr eJsonIndex kNoJson = std::numeric_limits<eJsonIndex>::max();

enum class eJsonKind : std::uint8_t { Null, Boolean, Integer, Real, Text, Array, Object };

// A piece of the tree's text store.
struct eJsonText {
    std::uint32_t begin;
    std::uint32_t size;
};

struct eJsonValue {
    eJsonKind kind = eJsonKind::Null;
    bool isTrue = false;
    bool isMember = false;  // of an object; otherwise an element of an array, or the root
    bool isRead = false;    // a reader has asked for this member
    eJsonIndex parent = kNoJson;
    eJsonIndex end = 0;  // behind the last value below this one
    union {
        eJsonText key{};         // of a member
        std::uint32_t position;  // of an element in its array
    };
    union {
        std::int64_t integer = 0;
        eJsonText text;       // of a text; of a real number as the document spells it
        std::uint32_t count;  // of an array or object
    };
};

// The values below an array or object, one level down.
class eJsonChildren {
public:
    class eIterator {
    public:
        eIterator(const eJsonValue* allValues, eJsonIndex start) : values(allValues), index(start) {}
        eJsonIndex operator*() const { return index; }
        eIterator& operator++() {
            index = values[index].end;
            return *this;
        }
        friend bool operator==(const eIterator&, const eIterator&) = default;

    private:
        const eJsonValue* values;
        eJsonIndex index;
    };

    eJsonChildren(const eJsonValue* allValues, eJsonIndex first, eJsonIndex last)
        : from(allValues, first), to(allValues, last) {}
    eIterator begin() const { return from; }
    eIterator end() const { return to; }

private:
    eIterator from;
    eIterator to;
};

class eJsonTree {
public:
    std::vector<eJsonValue> values;  // pre-order; values[kJsonRoot] is the whole document
    std::string store;               // keys, texts and real numbers, UTF-8
    // Members whose key stands before them in the same object.
    std::vector<eJsonIndex> repeatedMembers;

    eJsonKind Kind(eJsonIndex value) const { return values[value].kind; }
    bool Is(eJsonIndex value, eJsonKind kind) const { return values[value].kind == kind; }

    // All views of texts are UTF-8 and live as long as the tree.
    std::string_view Text(eJsonIndex value) const { return View(values[value].text); }
    std::string_view Key(eJsonIndex value) const { return View(values[value].key); }

    // Of an array or object; 0 for every other value.
    std::size_t Count(eJsonIndex value) const;
    eJsonChildren Children(eJsonIndex value) const { return {values.data(), value + 1, values[value].end}; }
    eJsonChildren NoChildren() const { return {values.data(), 0, 0}; }
    // The first member of that key, or kNoJson. Linear in the members.
    eJsonIndex FindMember(eJsonIndex object, std::string_view key) const;

    // A number as the nearest value of the type; nothing for another kind of value, and for a number beyond
    // the range of the type.
    std::optional<float> Float(eJsonIndex value) const;
    std::optional<double> Double(eJsonIndex value) const;
    bool IsNumber(eJsonIndex value) const {
        return Is(value, eJsonKind::Integer) || Is(value, eJsonKind::Real);
    }

    // Where the value stands, as a JSON pointer: /nodes/0/children/2; "/" for the whole
    // document.
    std::string PathOf(eJsonIndex value) const;

private:
    std::string_view View(eJsonText text) const {
        return std::string_view(store).substr(text.begin, text.size);
    }
};

}  // namespace standalone
