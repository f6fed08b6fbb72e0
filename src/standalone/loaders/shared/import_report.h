#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "standalone/load_result.h"

namespace standalone {

// Collects what an import has to tell.
class eImportReport {
public:
    // A fault of the file, see eLoadMessage.
    void Problem(eLoadMessage problem);
    template <class... Values>
    void Problem(std::string place, eMessageId id, const Values&... values) {
        Problem(MakeLoadMessage(std::move(place), id, values...));
    }
    bool HasProblems() const { return !problems.empty(); }

    // What the file holds and the import leaves out or changes: one warning line per file, with a list of
    // items, UTF-8. Repeated items are told once. `node` is the path of the node that the item is, if it is
    // one: the place of the message if it stays the only item.
    void Notice(eMessageId notice, const eBilingual& item, std::string node = {});
    void Notice(eMessageId notice, std::string_view item, std::string node = {}) {
        Notice(notice, eBilingual{std::string(item), std::string(item)}, std::move(node));
    }
    // The same for a kind of content.
    template <class... Values>
    void CannotShow(ePhrase what, const Values&... values) {
        Notice(eMessageId::ImportCannotShow, Utf8Words(what, values...));
    }

    // The text in code page 1251, "_" for what the page lacks and for control characters, which names and
    // values of properties can't hold. That is told with the text, behind its owner where there is one
    // (UTF-8).
    std::string Ansi(std::string_view utf8, std::string_view owner = {});

    // What was collected, warnings in the order of the table. The report is empty afterwards.
    std::vector<eLoadMessage> TakeProblems();
    std::vector<eLoadMessage> TakeWarnings();

private:
    struct eItem {
        eBilingual text;
        std::string node;
    };

    std::vector<eLoadMessage> problems;
    std::size_t problemCount = 0;
    std::map<eMessageId, std::vector<eItem>> notices;
};

}  // namespace standalone
