#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace standalone {

// The host's own reader of property text: lines end at CR or LF, the key is what stands before the first "=",
// blanks and tabs are trimmed at both ends of key and value, a line without "=" is a key with an empty value,
// empty lines are nothing, letter case of keys is ignored, the first match wins.
class eUserProperties {
public:
    // The text must outlive the object.
    explicit eUserProperties(std::string_view text);

    // The value of the key; nothing if no line has it. Costs one hash and a scan over as many numbers as the
    // text has lines: an exporter asks every node for dozens of keys.
    std::optional<std::string_view> Find(std::string_view key) const;

private:
    struct eLine {
        std::string_view key;
        std::string_view value;
    };

    std::vector<std::uint32_t> hashes;  // of the keys in lower case, by line
    std::vector<eLine> lines;
};

// The number as `atoi` reads it: blanks, sign, digits, 0 without digits; what the type can't hold ends at its
// nearest bound.
int ReadInteger(std::string_view text);

}  // namespace standalone
