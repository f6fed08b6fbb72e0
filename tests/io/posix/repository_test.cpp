// Names, mounts and resources of several parts.
#include "io/repository/repository.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "base/global_collector.h"
#include "io/file_cache.h"
#include "io/repository/repository_table.h"
#include "support/fail_text.h"
#include "support/message_collector.h"
#include "support/pak.h"
#include "support/temp_folder.h"

namespace {

using namespace xIo::xRepository;
using support::FailText;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Repository : public testing::Test {
protected:
    ~Repository() override {
        Clear();
        Settings() = {};
    }
    static std::string Read(const std::string& name) {
        const std::unique_ptr<xIo::eStream> stream = OpenResource(name);
        std::string text(static_cast<std::size_t>(stream->Size()), '\0');
        stream->Read(text.data(), stream->Size());
        return text;
    }

    support::eTempFolder folder;
    support::eMessageCollector messages;
};

TEST_F(Repository, ResolvesNames) {
    EXPECT_EQ(Resolve("/A\\B.txt"), "/a/b.txt");
    EXPECT_EQ(Resolve("//C:/x"), "//c:/x");
    EXPECT_EQ(Resolve("B.txt"), "b.txt");
    PushFolder("d/");
    EXPECT_EQ(Resolve("x"), "d/x");
    EXPECT_EQ(Resolve("../x"), "x");
    EXPECT_EQ(FailText([] { Resolve("../../x"); }), "../../x: Attempting to reach path outside resources");
    PushFolder("/a/b/");
    EXPECT_EQ(Resolve("../x"), "/a/x");
    EXPECT_EQ(Resolve("../../x"), "/x");
    EXPECT_EQ(FailText([] { Resolve("../../../../x"); }),
              "../../../../x: Attempting to reach path outside resources");
    std::thread([] { EXPECT_EQ(CurrentFolder(), ""); }).join();
    PopFolder();
    PopFolder();
    EXPECT_EQ(FailText([] { Resolve("../x"); }), "../x: Attempting to reach path outside resources");
    EXPECT_EQ(FailText([] { Resolve("@x"); }), "@x: Wrong resource name syntax");
    EXPECT_THAT(messages.log, HasSubstr("@x: Wrong resource name syntax (io/repository, "));
    messages.log.clear();
    EXPECT_FALSE(Exists("@x") || Exists("../x"));
    EXPECT_THAT(messages.log, IsEmpty());
}

TEST_F(Repository, KeepsTheUsersFilesInTheUsersFolder) {
    Settings().userSubfolder = "zyr_repository_test";
    const std::string name = Resolve("@/Save.dat");
    EXPECT_TRUE(name.starts_with("//") && name.ends_with("/zyr_repository_test/save.dat")) << name;
    EXPECT_EQ(MapPath("@/Save.dat"), name.substr(2));
    std::filesystem::remove(std::filesystem::path(name.substr(2)).parent_path());
}

TEST_F(Repository, MapsNamesToPaths) {
    folder.Write("a.txt", "a");
    Mount("/", folder.Path());
    Settings().basePath = "game";
    EXPECT_EQ(MapPath("/A.txt"), folder / "a.txt");
    EXPECT_EQ(MapPath("/b.txt"), "game/b.txt");
    EXPECT_EQ(MapPath("//X:/b.txt"), "x:/b.txt");
    Settings().pathMappers.emplace_back([](const std::string&) { return std::string("never asked"); });
    Settings().pathMappers.emplace_back([](const std::string& path) { return path + "!"; });
    EXPECT_EQ(MapPath("/A.txt"), folder / "a.txt");
    EXPECT_EQ(MapPath("/b.txt"), "game/b.txt!");
}

// Would catch: a folder that is read for ever through a link, an excluded file that is delivered, and an
// order that hangs on the disk.
TEST_F(Repository, MountsFolders) {
    for (const char* name : {"Tank.MDL", "units/a.txt", "units/b.txt", "units/c.txt", "units/deep/b.txt",
                             "cvs/c.txt", "x.bak", "core"}) {
        folder.Write(name, name);
    }
    std::filesystem::create_directory_symlink(folder.Path(), folder / "units/again");
    Settings().excludedFolders = {"cvs"};
    Settings().excludedExtensions = {".bak", ""};
    std::vector<std::string> heard;
    Settings().mountListeners.emplace_back([&](const std::string& name) { heard.push_back(name); });
    Mount("/game", folder.Path() + "/");
    EXPECT_EQ(heard, Names());
    EXPECT_THAT(Names(), ElementsAre("/game/tank.mdl", "/game/units/a.txt", "/game/units/b.txt",
                                     "/game/units/c.txt", "/game/units/deep/b.txt"));
    EXPECT_EQ(Read("/GAME/tank.mdl"), "Tank.MDL");
    EXPECT_TRUE(Exists("/game/units/A.txt"));
    EXPECT_FALSE(Exists("/game/x.bak"));
    EXPECT_THAT(messages.log, IsEmpty());
    EXPECT_EQ(FailText([] { OpenResource("/game/none"); }), "File not found - /game/none");
    Mount("/none", folder / "none");
    EXPECT_EQ(Names().size(), 5U);
}

TEST_F(Repository, TakesTheLaterMount) {
    folder.Write("1/a.txt", "first");
    folder.Write("2/a.txt", "second");
    std::vector<std::string> heard;
    Settings().mountListeners.emplace_back([&](const std::string& name) { heard.push_back(name); });
    Mount("/", folder / "1");
    Mount("/a.txt", folder / "2/a.txt");
    EXPECT_EQ(Read("/a.txt"), "second");
    EXPECT_THAT(heard, ElementsAre("/a.txt", "/a.txt"));
    std::filesystem::remove(folder / "2/a.txt");
    EXPECT_EQ(FailText([] { OpenResource("/a.txt"); }), "/a.txt: can't be opened");
}

// Would catch: parts in another order, a part that counts twice, a head that is lost.
TEST_F(Repository, JoinsParts) {
    for (const char* name : {"x.txt", "x+.txt", "1/x+.txt", "2/x+.txt"}) {
        folder.Write(name, "[" + std::string(name) + "]");
    }
    Mount("/x.txt", folder / "x.txt");
    Mount("/x+.txt", folder / "1/x+.txt");
    Mount("/x+.txt", folder / "2/x+.txt");
    EXPECT_EQ(Read("/x.txt"), "[x.txt][1/x+.txt][2/x+.txt]");
    Mount("/x+.txt", folder / "1/x+.txt");
    EXPECT_EQ(Read("/x.txt"), "[x.txt][1/x+.txt][2/x+.txt]");
    Mount("/x+.txt", folder / "x.txt");
    EXPECT_EQ(Read("/x.txt"), "[x.txt][1/x+.txt][2/x+.txt][x.txt]");
    EXPECT_FALSE(Exists("/x+.txt"));

    eFileStorage copy;
    copy.Assign(*FindStorage("/x.txt"));
    ASSERT_TRUE(copy.next && copy.next->next);
    EXPECT_EQ(copy.next->next->Description(), folder / "2/x+.txt");

    Clear();
    Mount("/", folder.Path());
    EXPECT_EQ(Read("/x.txt"), "[x.txt][x+.txt]");
    EXPECT_THAT(messages.log, Not(HasSubstr(folder / "x+.txt")));

    Clear();
    Mount("/x+.txt", folder / "x+.txt");
    EXPECT_THAT(messages.log, HasSubstr("Using multi-part before 1st resource mount - '" +
                                        (folder / "x+.txt") + "'. Content loss is possible."));
    EXPECT_EQ(Read("/x.txt"), "[x+.txt]");
    Mount("/x.txt", folder / "x.txt");
    EXPECT_EQ(Read("/x.txt"), "[x.txt]");
}

TEST_F(Repository, MountsOnDemand) {
    folder.Write("a/b.txt", "late");
    Settings().mountOnDemand = true;
    Settings().basePath = folder.Path();
    std::vector<std::string> opened;
    Settings().openHooks.emplace_back([&](const std::string& name) { opened.push_back(name); });
    PushFolder("/a/");
    EXPECT_TRUE(Exists("b.txt"));
    EXPECT_EQ(Read("b.txt"), "late");
    PopFolder();
    folder.Write("bad.pak", "no container");
    EXPECT_FALSE(Exists("/c.txt") || Exists("/bad.pak"));
    EXPECT_THAT(messages.log, IsEmpty());
    EXPECT_THAT(opened, ElementsAre("/a/b.txt"));
}

// Would catch: a list that ends the start of the application, a cached stream shared by two readers.
TEST_F(Repository, FillsTheFileCache) {
    const std::string content(300000, 'x');  // more than the container's buffer holds
    folder.Write("set/file_cache.set",
                 "{cache \"\" \"/A.txt\" \"/none\" \"/set/file_cache.set\" '/single' {\"/b.txt\"}}");
    folder.Write("game.pak", support::ePakBuilder().Add("b.txt", "b").Add("a.txt", content).Bytes());
    Mount("/", folder.Path());
    ASSERT_THAT(eGlobalCollector::Instance().Records(),
                Contains(Field(&eModuleRecord::start, &LoadFileCache)));
    eGlobalCollector::Instance().StartModules();
    EXPECT_THAT(messages.log,
                AllOf(HasSubstr("Can't find file for caching:  ("),
                      HasSubstr("Can't find file for caching: /none"), Not(HasSubstr("/single"))));
    std::filesystem::resize_file(folder / "game.pak", 0);
    const auto first = OpenResource("/a.txt");
    first->Skip(3);
    EXPECT_EQ(Read("/a.txt"), content);
    EXPECT_EQ(first->Position(), 3);
    EXPECT_THAT(FailText([] { OpenResource("/b.txt"); }), HasSubstr("game.pak[b.txt]: the entry is damaged"));
    eGlobalCollector::Instance().StopModules();
    EXPECT_THAT(Names(), IsEmpty());
}

}  // namespace
