// The records of an FBX file as they stand in it: what the import library drops (the order and the flags of
// user properties, the start of a take, curves of visibility) is read from them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace standalone {

// An array of numbers as its bytes stand in the file; fbx_arrays.h takes it apart.
struct eFbxArray {
    std::string_view stored;
    char letter = '\0';       // of the elements in a binary file; 0 in a text file
    std::uint32_t count = 0;  // in a binary file, as it claims
    bool isPacked = false;
};

// A value of a record: a whole number, a real, a text as its bytes stand in the file, or an array. What is
// passed over is the whole number 0.
using eFbxValue = std::variant<std::int64_t, double, std::string_view, eFbxArray>;

// Names, texts and arrays show into the bytes of the file.
struct eFbxRecord {
    std::string_view name;
    std::vector<eFbxValue> values;
    std::vector<eFbxRecord> children;

    // The first child of the name, or null.
    const eFbxRecord* Find(std::string_view child) const;
    // Empty, or 0, where the record has no such value, or one of another kind.
    std::string_view Text(std::size_t value) const;
    std::int64_t Whole(std::size_t value) const;
    double Real(std::size_t value) const;
    // The first array among the values; empty where there is none.
    eFbxArray Array() const;
};

// True for what begins as a binary FBX file does.
bool IsBinaryFbx(std::string_view bytes);

// True for what begins as a text FBX file does: with the comment or the record that its writers put there.
bool IsTextFbx(std::string_view bytes);

// The top-level records, as children of a nameless one; nothing where the bytes break the form of the format,
// or nest deeper than any writer nests. Takes time in proportion to the bytes.
std::optional<eFbxRecord> ReadFbxRecords(std::string_view bytes);

}  // namespace standalone
