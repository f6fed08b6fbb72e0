#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

// The bytes that a file should have, field by field, so that a failure names the first field that differs.
class eBytePieces {
public:
    eBytePieces& Text(const std::string& field, const std::string& bytes) {
        pieces.push_back({field, bytes});
        return *this;
    }
    template <class T>
    requires std::is_arithmetic_v<T> eBytePieces& Value(const std::string& field, T value) {
        std::string bytes(sizeof value, '\0');
        std::memcpy(bytes.data(), &value, sizeof value);
        return Text(field, bytes);
    }
    template <class T>
    eBytePieces& Values(const std::string& field, std::initializer_list<T> values) {
        for (const T value : values) {
            Value(field, value);
        }
        return *this;
    }

    testing::AssertionResult Match(const std::string& actual) const {
        std::size_t offset = 0;
        for (const auto& [field, bytes] : pieces) {
            if (actual.compare(offset, bytes.size(), bytes) != 0) {
                return testing::AssertionFailure()
                       << field << " at byte " << offset << " is " << Hex(actual.substr(offset, bytes.size()))
                       << ", not " << Hex(bytes);
            }
            offset += bytes.size();
        }
        return actual.size() == offset
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << actual.size() << " bytes, not " << offset;
    }

private:
    struct ePiece {
        std::string field;
        std::string bytes;
    };

    static std::string Hex(const std::string& bytes) {
        std::string text;
        for (const char byte : bytes) {
            char digits[4];
            std::snprintf(digits, sizeof digits, "%02x ", static_cast<unsigned char>(byte));
            text += digits;
        }
        return text;
    }

    std::vector<ePiece> pieces;
};
