// JSON text from values of the scene: one call per bracket, key and value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/values.h"
#include "standalone/scene_data.h"

namespace standalone {

class eJsonWriter {
public:
    void BeginObject() { Open('{'); }
    void EndObject() { Close('}'); }
    void BeginList() { Open('['); }
    void EndList() { Close(']'); }

    // Texts are bytes in code page 1251.
    void Key(std::string_view key);

    void Value(bool value);
    void Value(int value);
    void Value(std::uint32_t value);
    // The shortest digits that give the same number again; what is no finite number becomes 0.
    void Value(float value);
    void Value(double value);
    void Value(std::string_view value);
    void Value(const char* value) { Value(std::string_view(value)); }
    void Value(const host::Point2& value);
    void Value(const host::Point3& value);
    void Value(const host::Color& value);
    void Value(const host::ClassId& value);
    void Value(const host::Matrix3& value);
    void Value(const eRotation& value);
    template <class Item>
    void Value(const std::vector<Item>& items) {
        BeginList();
        for (const Item& item : items) {
            Value(item);
        }
        EndList();
    }
    void Null();

    template <class Type>
    void Member(std::string_view key, const Type& value) {
        Key(key);
        Value(value);
    }
    // Nothing for the value that stands for itself.
    template <class Type>
    void MemberUnless(const Type& standard, std::string_view key, const Type& value) {
        if (!(value == standard)) {
            Member(key, value);
        }
    }

    // Whether some number was not finite.
    bool HasLostNumbers() const { return hasLostNumbers; }
    // The text so far, without blanks and line ends.
    const std::string& Text() const { return text; }

private:
    void Open(char bracket);
    void Close(char bracket);
    void BeforeValue();
    template <class Number>
    void WriteNumber(Number value);
    void WriteText(std::string_view ansi);

    std::string text;
    bool needsComma = false;
    bool hasLostNumbers = false;
};

}  // namespace standalone
