#include "standalone/loaders/json/json_parse.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace standalone {
namespace {

using eSax = nlohmann::json_sax<nlohmann::json>;

// Objects of more members are searched for repeated keys by sorting.
constexpr std::size_t kFewMembers = 16;

eLoadMessage SyntaxProblem(std::string_view text, std::size_t offset, const std::string& reason) {
    const std::string_view before = text.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineBreak = before.rfind('\n');
    const std::size_t column = lineBreak == std::string_view::npos ? offset + 1 : offset - lineBreak;
    return MakeLoadMessage("", eMessageId::JsonSyntax, line, column, offset, reason);
}

// The reason without the parser's own account of the place, and without the text it read last, which may be
// of any length and no UTF-8 at all.
std::string ReasonIn(std::string_view message) {
    constexpr std::string_view placePrefix = "parse error at line ";
    message.remove_prefix(std::min(message.size(), message.find("] ") + 2));
    if (message.starts_with(placePrefix)) {
        message.remove_prefix(std::min(message.size(), message.find(": ") + 2));
    }
    message = message.substr(0, message.find("; last read: "));
    return std::string(message);
}

// Appends the values of the text to the tree as the parser meets them.
class eTreeBuilder final : public eSax {
public:
    eTreeBuilder(std::string_view document, eJsonTree& target) : text(document), tree(target) {}

    std::optional<eLoadMessage> problem;

    bool null() override {
        Add(eJsonKind::Null);
        return true;
    }
    bool boolean(bool isTrue) override {
        Add(eJsonKind::Boolean).isTrue = isTrue;
        return true;
    }
    bool number_integer(number_integer_t number) override {
        Add(eJsonKind::Integer).integer = number;
        return true;
    }
    bool number_unsigned(number_unsigned_t number) override {
        if (number > static_cast<number_unsigned_t>(std::numeric_limits<number_integer_t>::max())) {
            return number_float(0, std::to_string(number));
        }
        return number_integer(static_cast<number_integer_t>(number));
    }
    // Kept as spelled, because only its reader knows to which precision it is to be rounded.
    bool number_float(number_float_t, const string_t& digits) override {
        Add(eJsonKind::Real).text = Stored(digits);
        return true;
    }
    bool string(string_t& content) override {
        Add(eJsonKind::Text).text = Stored(content);
        return true;
    }
    // JSON texts hold no binary values.
    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override { return Open(eJsonKind::Object); }
    bool start_array(std::size_t) override { return Open(eJsonKind::Array); }
    bool key(string_t& name) override {
        pendingKey = Stored(name);
        return true;
    }
    bool end_object() override {
        FindRepeatedMembers(open.back());
        return Close();
    }
    bool end_array() override { return Close(); }

    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception& error) override {
        const bool isOverflow = dynamic_cast<const nlohmann::detail::out_of_range*>(&error) != nullptr;
        const std::size_t offset = std::min(position == 0 ? 0 : position - 1, text.size());
        problem =
            SyntaxProblem(text, offset, isOverflow ? "the number is too large" : ReasonIn(error.what()));
        return false;
    }

private:
    eJsonText Stored(std::string_view content) {
        const eJsonText piece{static_cast<std::uint32_t>(tree.store.size()),
                              static_cast<std::uint32_t>(content.size())};
        tree.store += content;
        return piece;
    }

    eJsonValue& Add(eJsonKind kind) {
        eJsonValue value;
        value.kind = kind;
        value.end = static_cast<eJsonIndex>(tree.values.size() + 1);
        if (!open.empty()) {
            eJsonValue& parent = tree.values[open.back()];
            value.parent = open.back();
            value.isMember = parent.kind == eJsonKind::Object;
            if (value.isMember) {
                value.key = pendingKey;
            } else {
                value.position = parent.count;
            }
            ++parent.count;
        }
        return tree.values.emplace_back(value);
    }

    bool Open(eJsonKind kind) {
        Add(kind).count = 0;
        open.push_back(static_cast<eJsonIndex>(tree.values.size() - 1));
        return true;
    }

    bool Close() {
        tree.values[open.back()].end = static_cast<eJsonIndex>(tree.values.size());
        open.pop_back();
        return true;
    }

    void FindRepeatedMembers(eJsonIndex object) {
        members.clear();
        for (eJsonIndex member = object + 1; member < tree.values.size(); member = tree.values[member].end) {
            members.push_back(member);
        }
        if (members.size() > kFewMembers) {
            FindRepeatedOfMany();
            return;
        }
        for (auto later = members.begin(); later != members.end(); ++later) {
            const std::string_view key = tree.Key(*later);
            if (std::any_of(members.begin(), later,
                            [&](eJsonIndex earlier) { return tree.Key(earlier) == key; })) {
                tree.repeatedMembers.push_back(*later);
            }
        }
    }

    void FindRepeatedOfMany() {
        std::sort(members.begin(), members.end(), [&](eJsonIndex left, eJsonIndex right) {
            const int order = tree.Key(left).compare(tree.Key(right));
            return order != 0 ? order < 0 : left < right;
        });
        for (std::size_t i = 1; i < members.size(); ++i) {
            if (tree.Key(members[i]) == tree.Key(members[i - 1])) {
                tree.repeatedMembers.push_back(members[i]);
            }
        }
    }

    std::string_view text;
    eJsonTree& tree;
    std::vector<eJsonIndex> open;  // arrays and objects not closed yet
    std::vector<eJsonIndex> members;
    eJsonText pendingKey{};
};

}  // namespace

std::optional<eLoadMessage> ParseJson(std::string_view text, eJsonTree& tree) {
    tree = {};
    if (text.size() >= kNoJson) {
        return MakeLoadMessage("", eMessageId::JsonTooLarge);
    }
    eTreeBuilder builder(text, tree);
    nlohmann::json::sax_parse(text.begin(), text.end(), &builder);
    return builder.problem;
}

}  // namespace standalone
