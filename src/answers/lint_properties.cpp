#include "answers/lint_properties.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "answers/look_alike.h"
#include "answers/property_keys.h"
#include "base/nearest_name.h"
#include "host/node_path.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/text_words.h"

namespace answers {
namespace {

// Values that name something: a slip in them is found nowhere.
constexpr const char* kNamingKeys[] = {"Model", "XModel", "Mesh", "CommonMesh"};

// Some readers take a key with blanks around it, others don't: it is read where one of them finds it.
bool IsRead(const host::INode& node, std::string_view key) {
    std::string value;
    return HasUserProp(node, key) || node.GetUserPropString(std::string(key).c_str(), value);
}

// Short keys resemble too many others.
std::string LikelyKey(std::string_view key) {
    constexpr std::size_t kShortest = 3;
    return key.size() < kShortest ? std::string() : NearestName(key, PropertyKeys());
}

class ePropertyLint {
public:
    ePropertyLint(const host::INode& ownNode, std::vector<eMessage>& ownAdvice)
        : node(ownNode), advice(ownAdvice) {}

    void CheckKey(std::string_view key) {
        if (key.empty() || (IsPropertyKey(key) && IsRead(node, key))) {
            return;
        }
        if (const std::string folded = InLatin(key); folded != key) {
            if (IsPropertyKey(folded)) {
                Add(eMessageId::LintMixedKey, key, key, node.GetName(), folded);
            }
        } else if (const std::string likely = LikelyKey(key); !likely.empty()) {
            Add(eMessageId::LintNearKey, key, key, node.GetName(), likely);
        }
    }
    void CheckNames() {
        if (MixesAlphabets(node.GetName())) {
            Add(eMessageId::LintMixedName, {}, node.GetName());
        }
        for (const char* key : kNamingKeys) {
            std::string value;
            if (node.GetUserPropString(key, value) && MixesAlphabets(value)) {
                Add(eMessageId::LintMixedValue, key, value, key, node.GetName());
            }
        }
    }

private:
    template <class... Values>
    void Add(eMessageId id, std::string_view property, const Values&... values) {
        advice.push_back(
            MakeMessage(id, {.node = host::PathOf(node), .property = std::string(property)}, values...));
    }

    const host::INode& node;
    std::vector<eMessage>& advice;
};

}  // namespace

void LintProperties(const host::INode& node, std::vector<eMessage>& advice) {
    ePropertyLint lint(node, advice);
    lint.CheckNames();
    const std::string& buffer = node.GetUserPropBuffer();
    for (std::string_view rest = buffer; !rest.empty();) {
        std::string_view line = rest.substr(0, rest.find_first_of("\r\n;"));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        lint.CheckKey(TrimBlanks(line.substr(0, line.find('='))));
    }
}

}  // namespace answers
