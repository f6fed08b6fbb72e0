// Containers: what is packed is read back, and what lies is told.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/failure_report.h"
#include "io/repository/pak_writer.h"
#include "io/repository/repository.h"
#include "io/repository/stream_zip.h"
#include "io/sdl/sdl_reader.h"
#include "support/message_collector.h"
#include "support/pak.h"
#include "support/temp_folder.h"

namespace {

using namespace xIo::xRepository;
using support::ePakBuilder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Pak : public testing::Test {
protected:
    ~Pak() override { Clear(); }
    static std::string Read(const std::string& name) {
        const std::unique_ptr<xIo::eStream> stream = OpenResource(name);
        std::string text(static_cast<std::size_t>(stream->Size()), '\0');
        stream->Read(text.data(), stream->Size());
        return text;
    }
    // Mounts a container of these bytes and reads all of it; the report of a fatal error, empty without one.
    std::string ReadAll(const std::string& bytes) {
        Clear();
        folder.Write("lie.pak", bytes);
        return FailureReport([&] {
            Mount("/", folder / "lie.pak");
            for (const std::string& name : Names()) {
                Read(name);
            }
        });
    }

    support::eTempFolder folder;
    support::eMessageCollector messages;
};

TEST_F(Pak, GivesBackWhatWasPacked) {
    std::mt19937 random(1);
    std::string noise(100000, '\0');
    for (char& c : noise) {
        c = static_cast<char>(random());
    }
    folder.Write("game/Units/Tank.mdl", std::string(500000, 'x').append(noise));
    folder.Write("game/noise.bin", noise);
    folder.Write("game/empty.txt", "");
    folder.Write("game/\xD0\x96.txt", "zh");
    const xIo::ePackedFolder packed = xIo::WritePak(folder / "game", folder / "out/game.pak");
    EXPECT_THAT(packed.problem.english, HasSubstr("game.pak"));
    folder.MakeFolder("out");
    const xIo::ePackedFolder again = xIo::WritePak(folder / "game", folder / "out/game.pak");
    EXPECT_EQ(again.problem.english, "");
    EXPECT_EQ(again.files, 4);
    EXPECT_EQ(again.bytes, 700002);
    EXPECT_EQ(static_cast<std::size_t>(again.packedBytes), folder.Read("out/game.pak").size());
    Mount("/data/game.pak", folder / "out/game.pak");
    EXPECT_THAT(Names(), ElementsAre("/data/empty.txt", "/data/noise.bin", "/data/units/tank.mdl",
                                     "/data/Ж.txt"_ansi));
    EXPECT_EQ(Read("/data/units/tank.mdl"), std::string(500000, 'x').append(noise));
    EXPECT_EQ(Read("/data/noise.bin"), noise);
    EXPECT_EQ(Read("/data/empty.txt"), "");
    EXPECT_EQ(Read("/data/Ж.txt"_ansi), "zh");
}

// Would catch: a container that differs from build to build, or that swallows itself.
TEST_F(Pak, DependsOnNamesAndContentAlone) {
    folder.Write("1/b/x.txt", "x");
    folder.Write("1/A.txt", "a");
    folder.Write("2/a.txt", "a");
    folder.Write("2/B/X.TXT", "x");
    for (const char* name : {"1/out.pak", "2/out.pak", "2/out.pak"}) {
        const std::string target(name);
        EXPECT_EQ(xIo::WritePak(folder / target.substr(0, 1), folder / target).files, 2);
    }
    EXPECT_EQ(folder.Read("1/out.pak"), folder.Read("2/out.pak"));
    EXPECT_FALSE(folder.Has("1/out.pak.tmp"));
}

// Would catch: a half container under the final name.
TEST_F(Pak, LeavesTheOldContainerWhenAFileCantBePacked) {
    folder.Write("game/a.txt", "a");
    folder.Write("old.pak", "old");
    std::filesystem::create_symlink("nowhere", folder / "game/b.txt");
    EXPECT_THAT(xIo::WritePak(folder / "game", folder / "old.pak").problem.english, HasSubstr("b.txt: "));
    EXPECT_EQ(folder.Read("old.pak"), "old");
    EXPECT_FALSE(folder.Has("old.pak.tmp"));
    folder.Write("game/c:d", "");
    EXPECT_THAT(xIo::WritePak(folder / "game", folder / "old.pak").problem.english,
                HasSubstr("can't hold this name"));
    EXPECT_THAT(xIo::WritePak(folder / "none", folder / "old.pak").problem.english,
                HasSubstr("no such folder"));
}

TEST_F(Pak, AppearsBesideItself) {
    const auto directoryOnly = [](xIo::eZipHeader&) {};
    folder.Write("data/game.pak", "leading bytes" + ePakBuilder()
                                                        .Add("sub/", "", directoryOnly)
                                                        .Add("Sub\\A.txt", "a")
                                                        .Add("x.txt", "head ")
                                                        .Add("x+.txt", "tail")
                                                        .Add("skip.bak", "")
                                                        .Bytes());
    Settings().excludedExtensions = {".bak"};
    Mount("/", folder.Path());
    EXPECT_THAT(Names(), ElementsAre("/data/sub/a.txt", "/data/x.txt"));
    EXPECT_EQ(Read("/data/sub/a.txt"), "a");
    EXPECT_EQ(Read("/data/x.txt"), "head tail");
    Settings() = {};
}

TEST_F(Pak, HoldsTextsThatIncludeOneAnother) {
    folder.Write("game/units/tank.mdl", "{model (include \"../common/gun.inc\") (\"gun\" args(3))}");
    folder.Write("game/common/gun.inc", "(define \"gun\" {gun (include \"size.inc\") %1%})");
    folder.Write("game/units/size.inc", "(1 + 1)");
    ASSERT_EQ(xIo::WritePak(folder / "game", folder / "game.pak").problem.english, "");
    Mount("/game.pak", folder / "game.pak");
    xIo::xSdl::eReader reader;
    reader.Open("/units/tank.mdl");
    EXPECT_EQ(reader.Ident(), "model");
    reader.BlockBegin();
    EXPECT_EQ(reader.Ident(), "gun");
    EXPECT_EQ(reader.Integer(), 2);
    EXPECT_EQ(reader.Integer(), 3);
    reader.BlockEnd();
}

struct eLie {
    const char* told;  // a part of the message
    std::string bytes;
};

// Would catch: memory, offsets or names taken from a container on its word.
TEST_F(Pak, TellsLies) {
    using eHeader = xIo::eZipHeader;
    using eEnd = xIo::eZipEnd;
    const auto with = [](auto change) { return ePakBuilder().Add("a.txt", "content", change).Bytes(); };
    const auto named = [](const std::string& name) { return ePakBuilder().Add(name, "").Bytes(); };
    const auto ended = [](auto change) { return ePakBuilder().Add("a.txt", "content").Bytes(change); };
    const eLie lies[] = {
        {"no end record", ""},
        {"no end record", std::string(100000, 'x')},
        {"leads out", named("../a.txt")},
        {"leads out", named("a/..\\..\\b.txt")},
        {"leads out", named("/a.txt")},
        {"leads out", named("c:/a.txt")},
        {"leads out", named(std::string("a\0b", 3))},
        {"leads out", named("")},
        {"can't have", with([](eHeader& header) { header.size = 8; })},
        {"can't have", with([](eHeader& header) { header.size = 0x90000000; })},
        {"can't have", with([](eHeader& header) {
             header.method = xIo::zipDeflated;
             header.size = 7 * 1032 + 1;
         })},
        {"damaged", with([](eHeader& header) {
             header.method = xIo::zipDeflated;
             header.size = 7 * 1032;
         })},
        {"beyond the container", with([](eHeader& header) { header.compressedSize = header.size = 100; })},
        {"beyond the container", with([](eHeader& header) { header.localPosition = 0xFFFFFFFF; })},
        {"damaged", with([](eHeader& header) {
             header.localPosition = 1;
             header.compressedSize = header.size = 0;
         })},
        {"damaged", with([](eHeader& header) { header.crc ^= 1; })},
        {"unknown method", with([](eHeader& header) { header.method = 12; })},
        {"encrypted", with([](eHeader& header) { header.flags = xIo::zipEncrypted; })},
        {"ends early", with([](eHeader& header) { header.commentLength = 1; })},
        {"ends early", with([](eHeader& header) { header.nameLength = 60000; })},
        {"number of entries", ended([](eEnd& end) { end.entryCount = 2; })},
        {"beyond the end record", ended([](eEnd& end) { end.directorySize = 0xFFFFFFFF; })},
        {"beyond the end record", ended([](eEnd& end) { end.directoryPosition = 0x7FFFFFFF; })},
        {"PK", ended([](eEnd& end) { end.directorySize -= 1; })},
    };
    for (const eLie& lie : lies) {
        EXPECT_THAT(ReadAll(lie.bytes), HasSubstr(lie.told));
    }
}

// Would catch: a half registered container, an overrun at any cut.
TEST_F(Pak, TellsEveryTruncation) {
    const std::string whole = ePakBuilder().Add("a.txt", "content").Add("b.txt", "more").Bytes();
    EXPECT_EQ(ReadAll(whole), "");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_THAT(ReadAll(whole.substr(0, length)), HasSubstr("lie.pak: can't open .pak (io/stream_zip, "))
            << length;
        EXPECT_THAT(Names(), IsEmpty()) << length;
    }
}

}  // namespace
