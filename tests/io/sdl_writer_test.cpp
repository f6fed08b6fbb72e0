// The layout of the text files, byte for byte: a blank, tab or line end too many breaks the engine's readers'
// expectations and every file comparison of a build farm.
#include "io/sdl/sdl_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

#include "support/message_collector.h"
#include "support/temp_folder.h"

namespace {

using xIo::xSdl::eWriter;

// What the calls leave in the target.
std::string Written(const std::function<void(eWriter&)>& calls) {
    xIo::eMemoryStream target;
    eWriter writer;
    writer.Attach(&target);
    calls(writer);
    writer.Close();
    return {reinterpret_cast<const char*>(target.Content().data()), target.Content().size()};
}

TEST(SdlWriter, WritesTheWorkedExample) {
    const std::string text = Written([](eWriter& writer) {
        writer.Word(";Exported by:\t").Word("user").EndLine();
        writer.BlockBegin().Word("skeleton").EndLine();
        writer.BlockBegin().Word("bone").String("a \"b\"").EndLine();
        writer.BlockBegin().Word("speed").Real(1.5f).BlockEnd();
        writer.BlockBegin().Word("color").Hexadecimal().Integer(-1).BlockEndLine();
        writer.BlockEndLine().BlockEndLine();
    });
    EXPECT_EQ(text,
              ";Exported by:\t user\r\n"
              "{skeleton\r\n"
              "\t{bone \"a \\\"b\\\"\"\r\n"
              "\t\t{speed 1.5}{color 0xffffffff}\r\n"
              "\t}\r\n"
              "}\r\n");
}

TEST(SdlWriter, SeparatesTokens) {
    EXPECT_EQ(Written([](eWriter& w) { w.EndLine().Word("first").EndLine(); }), "first\r\n");
    EXPECT_EQ(Written([](eWriter& w) { w.Word("a").Word("").Word("b"); }), "a  b");
    EXPECT_EQ(Written([](eWriter& w) { w.Word("a").Word(""); }), "a ");
    EXPECT_EQ(
        Written([](eWriter& w) { w.Word("x").BlockBegin().Word("a").BlockEnd().BlockBegin().BlockEnd(); }),
        "x {a}{}");
    EXPECT_EQ(Written([](eWriter& w) { w.BlockBegin().Word("name").BlockEnd().Word("y"); }), "{name}y");
    EXPECT_EQ(Written([](eWriter& w) { w.BlockBegin().Word("a").EndLine().EndLine().Word("b").BlockEnd(); }),
              "{a\r\n\tb}");
    EXPECT_EQ(Written([](eWriter&) {}), "");
    EXPECT_EQ(Written([](eWriter& w) { w.EndLine(); }), "");
}

TEST(SdlWriter, WritesNumbers) {
    EXPECT_EQ(Written([](eWriter& w) {
                  w.Integer(-2147483647 - 1).Hexadecimal().Integer(255).Integer(16);
                  w.Hexadecimal().Decimal().Integer(7).Real(0.1f).Real(-0.0f).Real(1234567.0f);
              }),
              "-2147483648 0xff 16 7 0.1 -0 1.23457e+006");
}

// Would catch: an escape seen twice, bytes above 0x7F taken for negative indices.
TEST(SdlWriter, EscapesFiveBytes) {
    EXPECT_EQ(Written([](eWriter& w) { w.String("\\\"\n\r\t"); }), "\"\\\\\\\"\\n\\r\\t\"");
    EXPECT_EQ(Written([](eWriter& w) { w.String("Танк \"Т\""_ansi); }), "\"Танк \\\"Т\\\"\""_ansi);
    EXPECT_EQ(Written([](eWriter& w) { w.String(std::string(1000, '\\')); }),
              '"' + std::string(2000, '\\') + '"');
    EXPECT_EQ(Written([](eWriter& w) { w.String(""); }), "\"\"");
}

// Would catch: a blank line, header or indentation left of a dropped block, or a full one dropped.
TEST(SdlWriter, TakesBackEmptyBlocks) {
    const auto tags = [](eWriter& w, bool empty) {
        w.BlockBegin().Word("zone").EndLine();
        w.BlockBegin().Word("able").EndLine().DropIfEmpty();
        if (!empty) {
            w.BlockBegin().Word("jump").BlockEndLine();
        }
        w.BlockEndLine().Word("next").BlockEndLine();
    };
    EXPECT_EQ(Written([&](eWriter& w) { tags(w, true); }), "{zone\r\n\tnext}\r\n");
    EXPECT_EQ(Written([&](eWriter& w) { tags(w, false); }),
              "{zone\r\n\t{able\r\n\t\t{jump}\r\n\t}\r\n\tnext}\r\n");
    EXPECT_EQ(Written([](eWriter& w) {
                  w.BlockBegin().Word("outer").DropIfEmpty();
                  w.BlockBegin().Word("inner").DropIfEmpty().BlockEnd().BlockEnd();
              }),
              "");
}

TEST(SdlWriter, WarnsOfInvalidReals) {
    support::eMessageCollector messages;
    EXPECT_EQ(Written([](eWriter& w) {
                  w.Word("a").Real(std::numeric_limits<float>::quiet_NaN()).EndLine();
                  w.Real(-std::numeric_limits<float>::infinity());
              }),
              "a 0\r\n0");
    EXPECT_THAT(messages.log,
                testing::HasSubstr("Saving invalid floating number nan. It was truncated to 0"));
    EXPECT_THAT(messages.log,
                testing::HasSubstr("Saving invalid floating number -inf. It was truncated to 0"));
}

// Would catch: text that reaches the file early, or a file that never gets its final name.
TEST(SdlWriter, FillsItsFileWhenItCloses) {
    const support::eTempFolder folder;
    {
        eWriter writer;
        ASSERT_TRUE(writer.OpenFile(folder / "tank.mdl"));
        writer.Word(std::string(100000, 'x')).EndLine();
        EXPECT_EQ(folder.Read("tank.mdl.tmp"), "");
        EXPECT_FALSE(folder.Has("tank.mdl"));
    }
    EXPECT_EQ(folder.Read("tank.mdl"), std::string(100000, 'x').append("\r\n"));
    eWriter writer;
    ASSERT_TRUE(writer.OpenFile(folder / "tank.mdl"));
    EXPECT_TRUE(writer.Close());
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(folder.Read("tank.mdl"), "");
}

}  // namespace
