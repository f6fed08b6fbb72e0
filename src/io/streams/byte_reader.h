#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <type_traits>

namespace xIo {

// Reads a binary format from bytes in memory. The first failure is kept with its offset, and everything read
// after it is empty or 0, so that a reader checks once per record instead of once per field.
class eByteReader {
public:
    explicit eByteReader(std::span<const std::uint8_t> content) : bytes(content) {}

    bool Failed() const { return !problem.empty(); }
    // What went wrong and at which byte; empty while nothing did.
    const std::string& Problem() const { return problem; }

    std::size_t Position() const { return position; }
    std::size_t Left() const { return bytes.size() - position; }
    bool AtEnd() const { return Failed() || Left() == 0; }

    void Fail(const std::string& reason) {
        if (!Failed()) {
            problem = reason + " at byte " + std::to_string(position);
        }
    }

    template <class T>
    requires std::is_trivially_copyable_v<T> T Value() {
        T value{};
        if (const auto field = Bytes(sizeof value); !field.empty()) {
            std::memcpy(&value, field.data(), sizeof value);
        }
        return value;
    }

    // The next bytes as they stand; empty if fewer are left, which is a failure.
    std::span<const std::uint8_t> Bytes(std::size_t count) {
        if (Failed() || count > Left()) {
            Fail("the file ends early");
            return {};
        }
        const auto result = bytes.subspan(position, count);
        position += count;
        return result;
    }

    // As written by eStream::WriteString.
    std::string String() {
        constexpr std::size_t kLongForm = 0xFF;
        std::size_t length = Value<std::uint8_t>();
        if (length == kLongForm) {
            const auto field = Bytes(3);
            length = field.empty() ? 0
                                   : field[0] | static_cast<std::size_t>(field[1]) << 8 |
                                         static_cast<std::size_t>(field[2]) << 16;
        }
        const auto text = Bytes(length);
        return {text.begin(), text.end()};
    }

    // True, and past it, if the four bytes of the tag come next; otherwise nothing is read.
    bool TakeTag(const char (&tag)[5]) {
        if (Failed() || Left() < 4 || std::memcmp(bytes.data() + position, tag, 4) != 0) {
            return false;
        }
        position += 4;
        return true;
    }

    // Like TakeTag, and a failure if another tag stands there.
    void Tag(const char (&tag)[5]) {
        if (!TakeTag(tag)) {
            Fail(std::string("the tag ") + tag + " is missing");
        }
    }

    // A number of elements that follow, each of at least so many bytes; a failure if the rest can't hold
    // them.
    template <class T>
    std::size_t Count(std::size_t bytesPerElement) {
        const auto count = static_cast<std::size_t>(Value<T>());
        if (bytesPerElement != 0 && count > Left() / bytesPerElement) {
            Fail("a count of " + std::to_string(count) + " is more than the file holds");
        }
        return Failed() ? 0 : count;
    }

private:
    std::span<const std::uint8_t> bytes;
    std::size_t position = 0;
    std::string problem;
};

}  // namespace xIo
