#include "io/name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "base/ansi.h"
#include "support/message_collector.h"

namespace {

TEST(Name, HasOneSpelling) {
    EXPECT_EQ(eName("D:\\Game\\Tank.DDS").Text(), "d:/game/tank.dds");
    EXPECT_EQ(eName("ТАНК\\X"_ansi).Text(), "ТАНК/x"_ansi);
    EXPECT_TRUE(eName(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_EQ(eName("a").Append(".mdl").Text(), "a.mdl");
    for (const auto& [path, resolved] :
         std::vector<std::pair<const char*, const char*>>{{"./a/.\\b//c.", "a/b/c."},
                                                          {"d:/art/x/../..\\common/a.tga", "d:/common/a.tga"},
                                                          {"/../a/../..", "/"},
                                                          {"../a/../../b..c", "../../b..c"},
                                                          {"//server/x/../a", "//server/a"}}) {
        EXPECT_EQ(ResolveDots(path), resolved);
    }
}

// Would catch: doubled or missing slashes, which make two names of one file.
TEST(Name, JoinsWithOneSlash) {
    for (const char* left : {"a", "a/"}) {
        for (const char* right : {"b", "/b"}) {
            EXPECT_EQ((eName(left) / right).Text(), "a/b");
        }
        EXPECT_EQ((eName(left) / "").Text(), "a/");
    }
    EXPECT_EQ((eName("") / "b").Text(), "/b");
    EXPECT_EQ((eName("") / "/b").Text(), "/b");
}

struct ePartCase {
    const char* path;
    const char* folder;
    const char* title;
    const char* extension;
    const char* withoutExtension;
    const char* fileName;
};

TEST(Name, HasParts) {
    const ePartCase cases[] = {
        {"a/b/file.ext", "a/b/", "file", ".ext", "a/b/file", "file.ext"},
        {"d:/game/model", "d:/game/", "model", "", "d:/game/model", "model"},
        {"d:/game/model.v2/tank", "d:/game/model.v2/", "tank", "", "d:/game/model.v2/tank", "tank"},
        {"d:/game/model.v2/", "d:/game/model.v2/", "", "", "d:/game/model.v2/", ""},
        {"file.a.b", "", "file.a", ".b", "file.a", "file.a.b"},
        {".mdl", "", "", ".mdl", "", ".mdl"},
        {"", "", "", "", "", ""},
    };
    for (const ePartCase& expected : cases) {
        const eName name(expected.path);
        EXPECT_EQ(name.Part(eName::Folder).Text(), expected.folder) << expected.path;
        EXPECT_EQ(name.Part(eName::Title).Text(), expected.title) << expected.path;
        EXPECT_EQ(name.Part(eName::Extension).Text(), expected.extension) << expected.path;
        EXPECT_EQ(name.Part(eName::WithoutExtension).Text(), expected.withoutExtension) << expected.path;
        EXPECT_EQ(name.Part(eName::FileName).Text(), expected.fileName) << expected.path;
    }
}

TEST(Name, TrimsAKnownRootOnly) {
    support::eMessageCollector messages;
    eName name("d:/game/units/tank");
    EXPECT_FALSE(name.TrimRoot("e:/game"));
    EXPECT_EQ(name.Text(), "d:/game/units/tank");
    EXPECT_THAT(messages.log,
                testing::StartsWith("Cannot trim root \"e:/game\" from path \"d:/game/units/tank\""));
    EXPECT_TRUE(name.TrimRoot("D:\\Game"));
    EXPECT_EQ(name.Text(), "/units/tank");
}

}  // namespace
