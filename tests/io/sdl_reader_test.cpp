// Hand-written SDL text: controls, and what is told when they go wrong.
#include "io/sdl/sdl_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/ansi.h"
#include "io/sdl/sdl_writer.h"
#include "io/streams/stream_memory.h"
#include "support/fail_text.h"
#include "support/message_collector.h"
#include "support/temp_folder.h"

namespace {

using namespace xIo::xSdl;
using support::FailText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string TextOf(eReader& reader) {
    std::string text;
    while (reader.Next().type != kTokenEnd) {
        reader.Unget();
        text += (text.empty() ? "" : " ") + std::string(reader.Next().text);
    }
    return text;
}

// The tokens of a text, controls resolved, with a blank between two.
std::string Read(const std::string& text) {
    eReader reader;
    reader.OpenText("text", text);
    return TextOf(reader);
}

class SdlReader : public testing::Test {
protected:
    ~SdlReader() override {
        xIo::xRepository::Clear();
        eReader::LoadingMods().names.clear();
    }
    void Mount() { xIo::xRepository::Mount("/", folder.Path()); }

    support::eTempFolder folder;
    support::eMessageCollector messages;
};

TEST_F(SdlReader, CountsFromLeftToRight) {
    EXPECT_EQ(Read("(1 + 2 * 3)"), "9");
    EXPECT_EQ(Read("a (7 / 2) (7 / 2.0) (1 - 4) b"), "a 3 3.5 -3 b");
    EXPECT_EQ(Read("(2 * (1 + 2) - (0x10))"), "-10");
    EXPECT_EQ(Read("(2147483647 + 1) (-2147483648 / -1)"), "-2147483648 -2147483648");
    eReader reader;
    reader.OpenText("text", "{(1 + 1) (3 / 2.0)}");
    reader.BlockBegin();
    EXPECT_EQ(reader.Integer(), 2);
    EXPECT_EQ(reader.Number(), 1.5F);
    reader.BlockEnd();
}

TEST_F(SdlReader, UnfoldsDefines) {
    EXPECT_EQ(Read("(define \"box\" {box (1 + 1)}) a (\"box\") (\"box\")"), "a { box 2 } { box 2 }");
    EXPECT_EQ(Read("(define \"p\" %1% %2% %size%) (\"p\" args(1 \"two words\" size(3 -4)))"),
              "1 two words 3 -4");
    EXPECT_EQ(
        Read("(define \"sum\" (%1% + %2%)) (define \"twice\" (\"sum\" args(%1% %1%))) (\"twice\" args(4))"),
        "8");
    EXPECT_EQ(Read("(define \"a\" 1)(define \"a\" 2)(\"a\")(\"a\" args())"), "2 2");
    EXPECT_EQ(Read("(define \"paren\" \")\" ;)\n )(\"paren\")"), ")");
    EXPECT_THAT(messages.log, IsEmpty());
}

// Would catch: a warning that ends the run, or a parameter that is dropped without a word.
TEST_F(SdlReader, WarnsOfUnusedParameters) {
    EXPECT_EQ(Read("(define \"x\" %2%) (\"x\" args(1 2 other(3)))"), "2");
    EXPECT_THAT(messages.log, HasSubstr("SDL: unused parameter(s) for parser \"define 'x'\" : 1 other"));
}

TEST_F(SdlReader, LeavesTaggedBlocksAndUnloadedModsOut) {
    EXPECT_EQ(Read("a {#x {b} (1) \"}\" } c {#} d"), "a c d");
    eReader::LoadingMods().names = {"snow"};
    EXPECT_EQ(Read("(mod \"snow\" a) (mod \"sand\" b (x)) (mod not \"sand\" c) (mod not \"snow\" d)"), "a c");
    EXPECT_EQ(Read("(mod \"snow\" {#x a})"), "{#x a }");
    EXPECT_EQ(Read("(mod \"snow\" (mod not \"sand\" {a (1 + 1)}) b)"), "{ a 2 } b");
}

TEST_F(SdlReader, SkipsTheRestOfABlock) {
    eReader::LoadingMods().names = {"snow"};
    const char* rests[] = {"} e", "{b} {c {d}}} e", "(1 + 1)} e", "\"}\" ;}\n} e", "1)} e"};
    for (const char* rest : rests) {
        const std::string begin = std::string(rest).starts_with("1)") ? "{a (mod \"snow\" " : "{a ";
        eReader reader;
        reader.OpenText("text", begin + rest);
        reader.BlockBegin();
        EXPECT_EQ(reader.Ident(), "a");
        reader.PeekIs(kTokenBlockEnd);
        reader.SkipBlock();
        EXPECT_EQ(reader.Ident(), "e") << rest;
    }
    eReader reader;
    reader.OpenText("text", "(define \"x\" 1 2) {(\"x\")} e");
    reader.BlockBegin();
    reader.Integer();
    reader.SkipBlock();
    EXPECT_EQ(reader.Ident(), "e");
}

TEST_F(SdlReader, IncludesFilesOfTheirFolders) {
    folder.Write("units/tank.mdl", "{model (include \"parts/hull.inc\" args(5)) (\"gun\") end}");
    folder.Write("units/parts/hull.inc", "{hull %1%} (include \"../../common.inc\")");
    folder.Write("common.inc", "(define \"gun\" {gun (include \"wheel.inc\")})");
    folder.Write("units/wheel.inc", "here");
    Mount();
    auto reader = std::make_unique<eReader>();
    reader->Open("/units/tank.mdl");
    EXPECT_EQ(reader->Ident(), "model");
    EXPECT_EQ(TextOf(*reader), "{ hull 5 } { gun here } end }");
    EXPECT_EQ(xIo::xRepository::CurrentFolder(), "/units/");

    // Would catch a reader that takes the place of another one with it, in folders and in reports.
    folder.Write("other/ship.mdl", "{ship}");
    Mount();
    eReader other;
    other.Open("/other/ship.mdl");
    reader.reset();
    EXPECT_EQ(xIo::xRepository::CurrentFolder(), "/other/");
    EXPECT_EQ(FailText([&] { other.Integer(); }), "SDL: integer expected");
    EXPECT_THAT(messages.log, HasSubstr("\n> (/other/ship.mdl)\n"));
}

// Would catch: a report that leaves the artist to search for the place.
TEST_F(SdlReader, TellsThePlaceOfAnError) {
    folder.Write("a.mdl", "{model\n(define \"x\" {y\n{z \"name\" 3})\n}\n(\"x\")\n}\n}");
    folder.Write("b.mdl", "{b\n(include \"a.mdl\")}");
    Mount();
    const auto read = [] {
        eReader reader;
        reader.Open("/b.mdl");
        reader.SkipBlock();
        reader.Integer();
    };
    EXPECT_EQ(FailText(read), "SDL: integer expected");
    messages.log.clear();
    const auto readDeep = [] {
        eReader reader;
        reader.Open("/b.mdl");
        while (reader.Next().text != "z") {
        }
        reader.Integer();
    };
    EXPECT_EQ(FailText(readDeep), "SDL: integer expected");
    EXPECT_THAT(
        messages.log,
        HasSubstr(ToUtf8(">>> (define 'x')\n>> (/a.mdl)\n> (/b.mdl)\n\n2:\t {y\n3:\t{z \xAB\"name\" 3}\n")));
}

struct eErrorCase {
    const char* text;
    const char* message;
};

TEST_F(SdlReader, TellsWhatIsWrong) {
    const eErrorCase cases[] = {
        {"(\"x\")", "SDL: define not found"},
        {"a)", "SDL: unexpected \")\""},
        {"(define \"x\" (", "SDL: block terminator expected"},
        {"(define x 1)", "SDL: string expected"},
        {"(include x)", "SDL: string expected"},
        {"(define \"x\" 1)(\"x\" args 1)", "SDL: invalid parameters syntax, missed \"(\""},
        {"(define \"x\" 1)(\"x\" args(1", "SDL: invalid parameters syntax, missed \")\""},
        {"(define \"x\" 1)(\"x\" args(a(1", "SDL: invalid parameters syntax, missed \")\""},
        {"(define \"x\" 1)(\"x\" 1)", "SDL: expected \")\""},
        {"(define \"x\" 1)(\"x\" args(1)", "SDL: expected \")\""},
        {"(mod x)", "SDL: unexpected token"},
        {"(mod \"x\" a", "SDL: expected \")\""},
        {"(other)", "SDL: unknown control block"},
        {"({)", "SDL: invalid control block"},
        {"(", "SDL: invalid control block"},
        {"(1 ! 2)", "SDL: Unsupported operation"},
        {"(1 2)", "SDL: Unsupported operation"},
        {"(1 + x)", "SDL: number expected"},
        {"(1 + 1", "SDL: expected \")\""},
        {"(1 / 0)", "SDL: division by zero"},
        {"(1 / (1 - 1.0))", "SDL: division by zero"},
        {"{#x {a}", "SDL: block terminator expected"},
    };
    for (const eErrorCase& entry : cases) {
        EXPECT_EQ(FailText([&] { Read(entry.text); }), entry.message) << entry.text;
    }
}

TEST_F(SdlReader, ExpectsTokensOfATypes) {
    const auto with = [](auto read) {
        return FailText([&] {
            eReader reader;
            reader.OpenText("text", "%");
            read(reader);
        });
    };
    EXPECT_EQ(with([](eReader& reader) { reader.Ident(); }), "SDL: ident expected");
    EXPECT_EQ(with([](eReader& reader) { reader.String(); }), "SDL: string expected");
    EXPECT_EQ(with([](eReader& reader) { reader.Integer(); }), "SDL: integer expected");
    EXPECT_EQ(with([](eReader& reader) { reader.Number(); }), "SDL: number expected");
    EXPECT_EQ(with([](eReader& reader) { reader.BlockBegin(); }), "SDL: block start expected");
    EXPECT_EQ(with([](eReader& reader) { reader.BlockEnd(); }), "SDL: block terminator expected");
    EXPECT_EQ(with([](eReader& reader) { reader.SkipBlock(); }), "SDL: block terminator expected");
}

// Would catch: a file whose end is missing and that is taken for a whole one.
TEST_F(SdlReader, ChecksThatAFileIsOneClosedBlock) {
    folder.Write("open.set", "{a {b}");
    folder.Write("closed.set", ";comment\n{a {b}} ;end");
    folder.Write("word.set", "a {b}");
    folder.Write("empty.set", "");
    Mount();
    const auto readBlock = [](const std::string& path) {
        eReader reader;
        reader.Open(path);
        reader.Ident();
        reader.BlockBegin();
        reader.SkipBlock();
    };
    EXPECT_EQ(FailText([&] { readBlock("/open.set"); }), "SDL: block terminator expected");
    EXPECT_EQ(FailText([&] { readBlock("/closed.set"); }), "");
    EXPECT_EQ(FailText([&] { readBlock("/word.set"); }), "SDL: invalid file");
    EXPECT_EQ(FailText([&] { readBlock("/empty.set"); }), "SDL: invalid file");
    EXPECT_EQ(FailText([&] { readBlock("/none.set"); }), "File not found - /none.set");
}

// Would catch: texts that call one another for ever, until the stack or the memory ends.
TEST_F(SdlReader, LimitsWhatUnfolds) {
    folder.Write("self.inc", "{a (include \"self.inc\")}");
    Mount();
    EXPECT_EQ(FailText([] {
                  eReader reader;
                  reader.Open("/self.inc");
                  TextOf(reader);
              }),
              "SDL: includes and defines are nested too deeply");
    EXPECT_EQ(FailText([] { Read("(define \"a\" (\"a\")) (\"a\")"); }),
              "SDL: includes and defines are nested too deeply");
    EXPECT_EQ(FailText([] { Read("(1 + " + std::string(100000, '(')); }), "SDL: invalid control block");
    std::string deep;
    std::string growing = "(define \"x0\" )";
    for (int level = 0; level < 1000; ++level) {
        deep += "(1 + ";
    }
    for (int level = 1; level < 50; ++level) {
        const std::string below = "(\"x" + std::to_string(level - 1) + "\")";
        growing += "(define \"x" + std::to_string(level) + "\" " + below + below + ")";
    }
    EXPECT_EQ(FailText([&] { Read(deep); }), "SDL: parentheses are nested too deeply");
    EXPECT_EQ(FailText([&] { Read(growing + "(\"x49\")"); }),
              "SDL: includes and defines unfold to more than 64 megabytes");
    std::string marks;
    for (int mark = 0; mark < 100000; ++mark) {
        marks += "%1%";
    }
    EXPECT_EQ(FailText([&] { Read("(define \"x\" " + marks + ")(\"x\" args(\"" + marks + "\"))"); }),
              "SDL: includes and defines unfold to more than 64 megabytes");
}

// Would catch: an escape or a number form that the writer writes and the reader takes for something else.
TEST_F(SdlReader, ReadsWhatTheWriterWrites) {
    xIo::eMemoryStream stream;
    const std::string special = std::string("\\ \" \n \r \t ") + "Ж"_ansi + std::string(300, '\\');
    {
        eWriter writer;
        writer.Attach(&stream);
        writer.Word(";Exported by:\t").EndLine().BlockBegin().Word("Head").String(special.c_str());
        writer.Integer(-5).Hexadecimal().Integer(-1).Real(1.5e-5F).Real(1234567.0F).BlockEnd();
        writer.Close();
    }
    eReader reader;
    const auto content = stream.Content();
    reader.OpenText("text", std::string(content.begin(), content.end()));
    reader.BlockBegin();
    EXPECT_EQ(reader.Ident(), "head");
    EXPECT_EQ(reader.String(), special);
    EXPECT_EQ(reader.Integer(), -5);
    EXPECT_EQ(reader.Integer(), -1);
    EXPECT_EQ(reader.Number(), 1.5e-5F);
    EXPECT_EQ(reader.Number(), 1234570.0F);
    reader.BlockEnd();
    EXPECT_TRUE(reader.PeekIs(kTokenEnd));
    EXPECT_EQ(Read("\"c:\\game\\data\\\\\" a"), "c:\\game\\data\\ a") << "as somebody has typed it";
}

}  // namespace
