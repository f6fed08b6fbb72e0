#include "answers/find_node.h"

#include <map>
#include <utility>
#include <vector>

#include "base/ansi.h"
#include "base/nearest_name.h"
#include "base/number_text.h"
#include "host/node_path.h"
#include "messages/utf8_words.h"

namespace answers {

namespace {

struct eNamedNode {
    host::INode* node;
    std::string path;
};

void Collect(host::INode& above, std::vector<eNamedNode>& nodes) {
    for (int i = 0; i < above.NumberOfChildren(); ++i) {
        host::INode& child = *above.GetChildNode(i);
        nodes.push_back({&child, host::PathOf(child)});
        Collect(child, nodes);
    }
}

std::vector<eNamedNode> Matches(const std::vector<eNamedNode>& nodes, const std::string& asked) {
    std::vector<eNamedNode> matches;
    for (const eNamedNode& node : nodes) {
        if (EqualNoCase(node.path, asked) || EqualNoCase(node.node->GetName(), asked)) {
            matches.push_back(node);
        }
    }
    return matches;
}

// "arm#2" taken apart; nothing behind a "#" that counts none.
std::size_t CutOrdinal(std::string& asked) {
    const std::size_t mark = asked.rfind('#');
    const int ordinal = mark != std::string::npos ? ReadInteger(asked.substr(mark + 1)) : 0;
    if (ordinal > 0) {
        asked.resize(mark);
    }
    return static_cast<std::size_t>(ordinal > 0 ? ordinal : 0);
}

eBilingual NearestTo(const std::vector<eNamedNode>& nodes, const std::string& asked) {
    std::vector<std::string> known;
    known.reserve(2 * nodes.size());
    for (const eNamedNode& node : nodes) {
        known.push_back(node.node->GetName());
    }
    for (const eNamedNode& node : nodes) {
        known.push_back(node.path);
    }
    const std::string nearest = NearestName(asked, known);
    return nearest.empty() ? eBilingual() : Utf8Words(ePhrase::DidYouMean, ToUtf8(nearest));
}

// Nodes of one path are told apart by their number.
std::string PathsOf(const std::vector<eNamedNode>& matches) {
    std::map<std::string, int> seen;
    std::string text;
    for (const eNamedNode& match : matches) {
        const int ordinal = ++seen[match.path];
        text += "\n  " + ToUtf8(match.path);
        text += ordinal > 1 ? "#" + std::to_string(ordinal) : "";
    }
    return text;
}

}  // namespace

eFoundNode FindNode(host::INode& sceneRoot, const std::string& asked) {
    std::vector<eNamedNode> nodes;
    Collect(sceneRoot, nodes);
    std::vector<eNamedNode> matches = Matches(nodes, asked);
    std::string name = asked;
    const std::size_t ordinal = matches.empty() ? CutOrdinal(name) : 0;
    if (ordinal > 0) {
        matches = Matches(nodes, name);
        matches = ordinal <= matches.size() ? std::vector{matches[ordinal - 1]} : std::vector<eNamedNode>();
    }
    if (matches.empty()) {
        return {nullptr, Utf8Words(ePhrase::NoSuchNode, ToUtf8(asked), NearestTo(nodes, asked))};
    }
    if (matches.size() > 1) {
        return {nullptr, Utf8Words(ePhrase::SeveralNodes, ToUtf8(asked), PathsOf(matches))};
    }
    return {matches.front().node, {}};
}

}  // namespace answers
