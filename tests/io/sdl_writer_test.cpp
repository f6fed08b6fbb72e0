// The layout of the text files, byte for byte: a blank, tab or line end too many breaks the engine's readers'
// expectations and every file comparison of a build farm.
#include "io/sdl_writer.h"

#include <gtest/gtest.h>

#include <cmath>
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

}  // namespace
