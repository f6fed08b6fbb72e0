#pragma once

#include <string>
#include <string_view>

// A cursor over a property text: pairs separated by ";", each `key`, `key=value` or empty. The text is not
// owned and must outlive the cursor, as must what Key and Value give.
class ePropText {
public:
    explicit ePropText(const std::string& walked) { Bind(walked); }

    // Stands on the first pair of the text.
    void Bind(const std::string& walked);
    // The number of pairs: a final ";" adds none, ";;" in the middle counts an empty one.
    int Count() const;
    // Stands on the pair of that index. False, at the end of the text, if there is none.
    bool Seek(int index);
    // Stands on the next pair. False, at the end of the text, if there is none.
    bool Next();
    // Stands on the first pair with the key, which is not empty, letter case ignored. False, at the end of
    // the text, if there is none.
    bool Find(std::string_view key);

    // Of the current pair; a value ends at a second "=".
    std::string_view Key() const { return UpToStop(keyBegin); }
    std::string_view Value() const { return UpToStop(valueBegin); }

private:
    static constexpr char pairSeparator = ';';
    static constexpr char keySeparator = '=';
    static constexpr char stopSet[] = {pairSeparator, keySeparator};

    const char* End() const { return text->data() + text->size(); }
    // The pair behind the one that starts there, or the end of the text.
    const char* PairBehind(const char* pair) const;
    void StandAt(const char* pair);
    std::string_view UpToStop(const char* begin) const;
    bool HasKey(const char* pair, std::string_view key) const;

    const char* keyBegin = nullptr;
    const char* valueBegin = nullptr;  // at the end of the text when the pair has no "="
    const std::string* text = nullptr;
};
