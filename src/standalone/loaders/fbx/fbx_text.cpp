#include "standalone/loaders/fbx/fbx_text.h"

#include <charconv>

#include "standalone/loaders/fbx/fbx_binary.h"

namespace standalone {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kEndsOfWord = " \t\r\n,:{};\"";

class eTextReader {
public:
    explicit eTextReader(std::string_view content) : rest(content) {}

    std::optional<eFbxRecord> Read() {
        eFbxRecord root;
        ReadList(root, 0);
        return isGood && rest.empty() ? std::optional(std::move(root)) : std::nullopt;
    }

private:
    // Past blanks and comments.
    void Advance() {
        while (true) {
            rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
            if (!rest.starts_with(';')) {
                return;
            }
            rest.remove_prefix(std::min(rest.find('\n'), rest.size()));
        }
    }

    bool Accept(char sign) {
        Advance();
        if (!rest.starts_with(sign)) {
            return false;
        }
        rest.remove_prefix(1);
        return true;
    }

    std::string_view Word() {
        const std::string_view word = rest.substr(0, rest.find_first_of(kEndsOfWord));
        rest.remove_prefix(word.size());
        return word;
    }

    // Records up to the closing brace, or to the end of the file.
    void ReadList(eFbxRecord& parent, int level) {
        isGood = isGood && level < kMostFbxLevels;
        for (Advance(); isGood && !rest.empty() && !rest.starts_with('}'); Advance()) {
            const std::string_view name = Word();
            isGood = !name.empty() && Accept(':');
            if (isGood) {
                eFbxRecord& record = parent.children.emplace_back();
                record.name = name;
                ReadRecord(record, level);
            }
        }
    }

    void ReadRecord(eFbxRecord& record, int level) {
        if (!IsBehindLine() && !rest.starts_with('{')) {
            do {
                ReadValue(record, level);
            } while (isGood && Accept(','));
        }
        if (isGood && Accept('{')) {
            ReadList(record, level + 1);
            isGood = isGood && Accept('}');
        }
    }

    // True where nothing stands between here and the end of the line: a record without values.
    bool IsBehindLine() {
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r"), rest.size()));
        return rest.empty() || rest.front() == '\n' || rest.front() == ';';
    }

    void ReadValue(eFbxRecord& record, int level) {
        Advance();
        if (rest.starts_with(',')) {
            record.values.emplace_back(std::int64_t{0});  // pictures inside the file begin with no value
        } else if (rest.starts_with('"')) {
            ReadText(record);
        } else if (rest.starts_with('*')) {
            ReadArray(record, level);
        } else {
            ReadNumber(record);
        }
    }

    void ReadText(eFbxRecord& record) {
        const std::size_t end = rest.find('"', 1);
        isGood = end != std::string_view::npos;
        if (isGood) {
            record.values.emplace_back(rest.substr(1, end - 1));
            rest.remove_prefix(end + 1);
        }
    }

    void ReadArray(eFbxRecord& record, int level) {
        Word();
        isGood = Accept('{');
        const std::size_t end = isGood ? rest.find('}') : std::string_view::npos;
        isGood = end != std::string_view::npos && level < kMostFbxLevels;
        if (isGood) {
            record.values.emplace_back(eFbxArray{rest.substr(0, end)});
            rest.remove_prefix(end + 1);
        }
    }

    // A number, or a bare word such as the letter of a flag.
    void ReadNumber(eFbxRecord& record) {
        const std::string_view word = Word();
        const char* end = word.data() + word.size();
        std::int64_t whole = 0;
        double real = 0;
        isGood = !word.empty();
        if (const auto read = std::from_chars(word.data(), end, whole); read.ptr == end) {
            record.values.emplace_back(whole);
        } else if (const auto readReal = std::from_chars(word.data(), end, real); readReal.ptr == end) {
            record.values.emplace_back(real);
        } else {
            record.values.emplace_back(word);
        }
    }

    std::string_view rest;
    bool isGood = true;
};

}  // namespace

std::optional<eFbxRecord> ReadTextFbx(std::string_view bytes) {
    return eTextReader(bytes).Read();
}

}  // namespace standalone
