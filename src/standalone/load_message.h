#pragma once

#include <string>
#include <utility>

#include "messages/utf8_words.h"

namespace standalone {

// What a loader tells of a scene file, UTF-8. messages/scene_file_table.inc has the words.
struct eLoadMessage {
    eMessageId id;
    std::string place;  // in the file: a JSON path, or the name of a node or take; empty for the whole file
    eBilingual text;
    std::string node{};  // its path from the top of the scene, as far as the file tells it

    // With the place in front.
    eBilingual Line() const {
        return place.empty() ? text : eBilingual{place + ": " + text.russian, place + ": " + text.english};
    }
};

// The values, UTF-8, are those of the message's row in the table.
template <class... Values>
eLoadMessage MakeLoadMessage(std::string place, eMessageId id, const Values&... values) {
    return {id, std::move(place), Utf8Text(id, values...)};
}

}  // namespace standalone
