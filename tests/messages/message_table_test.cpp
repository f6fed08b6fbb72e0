#include "messages/message_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "base/ansi.h"
#include "messages/phrase_match.h"
#include "messages/utf8_words.h"

namespace {

std::vector<std::string> Placeholders(const std::string& text) {
    static const std::regex kPlaceholder("%[0-9]%|%[.0-9]*[a-z]");
    return {std::sregex_token_iterator(text.begin(), text.end(), kPlaceholder), {}};
}

bool HasForeignLetters(const std::string& text) {
    return std::ranges::any_of(text, [](char byte) { return static_cast<signed char>(byte) < 0; });
}

// Would catch a word whose form hangs on a value that is not there, or that has a form too few.
void ExpectWholeForms(const std::string& text) {
    static const std::regex kForms("\\{([1-9]):[^{}|]*(\\|[^{}|]*){1,2}\\}");
    const auto places = static_cast<int>(Placeholders(text).size());
    for (auto form = std::sregex_iterator(text.begin(), text.end(), kForms); form != std::sregex_iterator();
         ++form) {
        EXPECT_LE(std::stoi((*form)[1]), places) << text;
    }
    EXPECT_EQ(std::regex_replace(text, kForms, "").find('|'), std::string::npos) << text;
}

// Would catch a code that stands for two messages, a translation that swaps or loses a name, a text that is
// missing in a language or stands there in the other, and a cure that is no sentence.
TEST(MessageTable, EveryMessageIsTheSameInBothLanguages) {
    std::set<std::string> codes;
    for (const eMessageRow& row : AllMessages()) {
        SCOPED_TRACE(row.code);
        EXPECT_TRUE(codes.insert(row.code).second);
        EXPECT_TRUE(std::regex_match(row.code, std::regex("[a-z]+(-[a-z]+)*\\.[a-z]+(-[a-z]+)*")));
        EXPECT_EQ(Placeholders(row.russian), Placeholders(row.english));
        ExpectWholeForms(row.russian);
        ExpectWholeForms(row.english);
        EXPECT_STRNE(row.english, "");
        EXPECT_TRUE(HasForeignLetters(row.russian) || std::string(row.russian) == row.english);
        EXPECT_FALSE(HasForeignLetters(row.english) || HasForeignLetters(row.cure));
        EXPECT_TRUE(HasForeignLetters(row.russianCure));
        EXPECT_EQ(std::string(row.cure).back(), '.');
        EXPECT_EQ(std::string(row.russianCure).back(), '.');
        EXPECT_EQ(FindMessage(row.code), &row);
    }
    EXPECT_EQ(FindMessage("bones"), nullptr);
    for (const ePhraseRow& row : AllPhrases()) {
        EXPECT_EQ(Placeholders(row.russian), Placeholders(row.english)) << row.english;
        ExpectWholeForms(row.russian);
        ExpectWholeForms(row.english);
        EXPECT_TRUE(HasForeignLetters(row.russian) && !HasForeignLetters(row.english)) << row.english;
    }
}

// Would catch a reason that stays Russian in an English text.
TEST(MessageTable, APhraseFollowsTheLanguageOfItsMessage) {
    const eMessage message = MakeMessage(eMessageId::SharedMeshNotWritten, {.node = "a/b"}, "b", "c",
                                         Words(ePhrase::BoneHidden, "d"));
    EXPECT_EQ(
        message.text.english,
        "The bone 'b' shows the mesh of the bone 'c', but that mesh is not written: the bone 'd' is hidden.");
    EXPECT_EQ(ToUtf8(message.text.russian),
              "Кость 'b' показывает мэш кости 'c', но этот мэш не записан: кость 'd' скрыта.");
}

// Would catch names beyond code page 1251 that are lost on the way to a terminal, a word that does not go
// with its number, and one of a library's texts that is taken for another.
TEST(MessageTable, WordsForTerminalsTakeNamesAndNumbers) {
    EXPECT_EQ(Say(eLanguage::Russian, ePhrase::ReasonNoAnimations, "木"), "у модели 木 нет анимаций");
    const std::pair<int, const char*> kFiles[] = {
        {0, "изменено 0 файлов"}, {1, "изменен 1 файл"},        {4, "изменены 4 файла"},
        {5, "изменено 5 файлов"}, {11, "изменено 11 файлов"},   {12, "изменено 12 файлов"},
        {21, "изменен 21 файл"},  {111, "изменено 111 файлов"}, {102, "изменены 102 файла"},
    };
    for (const auto& [number, text] : kFiles) {
        EXPECT_EQ(Say(eLanguage::Russian, ePhrase::SumChanged, number), text);
    }
    EXPECT_EQ(Utf8Words(ePhrase::SumSeconds, "0.05"), (eBilingual{"0.05 секунды", "0.05 seconds"}));
    EXPECT_EQ(Utf8Words(ePhrase::CountNew, 2), (eBilingual{"2 новых", "2 new"}));
    EXPECT_EQ(Say(eLanguage::English, ePhrase::CountMesh, 1), "1 mesh");
    EXPECT_EQ(Say(eLanguage::English, ePhrase::CountMesh, 21), "21 meshes");
    constexpr ePhrase kUsage[] = {ePhrase::UsageNoCommand, ePhrase::UsageNoValue, ePhrase::UsageMissing};
    EXPECT_EQ(ByPhrase("A subcommand is required", kUsage).russian, "Не указана команда");
    EXPECT_EQ(ByPhrase("--fps: 1 required N missing", kUsage).russian, "--fps: не хватает 1 значения N");
    EXPECT_EQ(ByPhrase("SCENE is required", kUsage).russian, "Не указано: SCENE");
    EXPECT_EQ(ByPhrase("SCENE is required too", kUsage).russian, "SCENE is required too");
}

}  // namespace
