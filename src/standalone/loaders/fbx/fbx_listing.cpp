#include "standalone/loaders/fbx/fbx_listing.h"

#include <charconv>

#include "standalone/loaders/shared/short_number.h"

namespace standalone {
namespace {

class eListingReader {
public:
    explicit eListingReader(std::string_view text) : rest(text) {}

    std::optional<eFbxListing> Read() {
        if (!Accept("[")) {
            return std::nullopt;
        }
        do {
            if (!ReadEntry()) {
                return std::nullopt;
            }
        } while (Accept(", "));
        return rest == "]" ? std::optional(std::move(listing)) : std::nullopt;
    }

private:
    bool Accept(std::string_view sign) {
        const bool isThere = rest.starts_with(sign);
        rest.remove_prefix(isThere ? sign.size() : 0);
        return isThere;
    }

    // The entries are all of the kind of the first.
    bool ReadEntry() {
        const bool isText = rest.starts_with('\'') || rest.starts_with('"');
        if (listing.entries.empty()) {
            listing.areTexts = isText;
        }
        return isText == listing.areTexts && (isText ? ReadText() : ReadNumber());
    }

    bool ReadText() {
        const char quote = rest.front();
        std::string& entry = listing.entries.emplace_back();
        for (std::size_t at = 1; at < rest.size(); ++at) {
            if (rest[at] == quote) {
                rest.remove_prefix(at + 1);
                return true;
            }
            at += rest[at] == '\\' && at + 1 < rest.size() ? 1 : 0;
            entry += rest[at];
        }
        return false;
    }

    bool ReadNumber() {
        double number = 0;
        const auto read = std::from_chars(rest.data(), rest.data() + rest.size(), number);
        rest.remove_prefix(static_cast<std::size_t>(read.ptr - rest.data()));
        listing.entries.push_back(ShortNumber(number));
        return read.ec == std::errc();
    }

    std::string_view rest;
    eFbxListing listing;
};

}  // namespace

std::optional<eFbxListing> ReadFbxListing(std::string_view text) {
    return eListingReader(text).Read();
}

}  // namespace standalone
