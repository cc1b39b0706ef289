// SPDX-License-Identifier: MIT
#include "updates/InstallerImageCleanup.h"

#include "fakes/FakeCore.h"
#include "fakes/FakeUpdates.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

class InstallerImageCleanupTest : public testing::Test, protected FakeCore {
protected:
    void cleanUp(const char* program = "/Applications/stowpocket.app") {
        tool.done.clear();
        InstallerImageCleanup cleanup({core, tool, tool, tool}, *FileURL::fromPath(program),
                                      FileURL::fromPath("/home/user"));
        cleanup.cleanUp();
        dispatch.advance(7999ms);
        EXPECT_TRUE(tool.done.empty());
        dispatch.advance(1ms);
        EXPECT_TRUE(tool.done.empty()) << "not on the main thread";
        dispatch.runAll();
    }
    static Dictionary image(const char* path, const char* mountPoint) {
        return {{"image-path", path},
                {"system-entities",
                 Array{"rubbish", Dictionary{{"dev-entry", "disk4"}}, Dictionary{{"mount-point", "/Volumes/EFI"}},
                       Dictionary{{"mount-point", mountPoint}}}}};
    }

    using Done = std::vector<std::string>;
    FakeImageTool tool;
    const Done onlyAsked{"/usr/bin/hdiutil info -plist"};
};

TEST_F(InstallerImageCleanupTest, theFirstImageWithTheSameBundleIsDetachedAndTrashed) {
    files.add("/Volumes/nameless/stowpocket.app");
    files.add("/Volumes/b/stowpocket.app");
    files.add("/Volumes/c/stowpocket.app");
    Dictionary nameless = image("", "/Volumes/nameless");
    nameless.erase("image-path");
    tool.info = Dictionary{
        {"images", Array{3, nameless, Dictionary{{"image-path", "/bare.dmg"}}, image("/a.dmg", "/Volumes/a"),
                         image("/b.dmg", "/Volumes/b"), image("/c.dmg", "/Volumes/c")}}};
    cleanUp();
    EXPECT_EQ(tool.done,
              (Done{"/usr/bin/hdiutil info -plist", "/usr/bin/hdiutil detach /Volumes/b -quiet", "trash /b.dmg"}));
    EXPECT_EQ(dispatch.idleWork, 1);
    tool.canDetach = false;
    cleanUp();
    EXPECT_EQ(tool.done.back(), "/usr/bin/hdiutil detach /Volumes/b -quiet") << "nothing more was done";
}

TEST_F(InstallerImageCleanupTest, onlyACopyInAnApplicationsFolderLooks) {
    for (const auto& [program, looks] : {std::pair("/Applications/stowpocket.app", true),
                                         {"/ApplicationsBackup/stowpocket.app", true},
                                         {"/home/user/Applications/stowpocket.app", true},
                                         {"/home/user/ApplicationsBackup/stowpocket.app", true},
                                         {"/Volumes/stowpocket/stowpocket.app", false}}) {
        cleanUp(program);
        EXPECT_EQ(tool.done, looks ? onlyAsked : Done()) << program;
    }
}

TEST_F(InstallerImageCleanupTest, whatTheToolSaysMayBeAnything) {
    for (const std::optional<PropertyValue>& answer :
         {std::optional<PropertyValue>(),
          {"text"},
          {Dictionary{}},
          {Dictionary{{"images", "none"}}},
          {Dictionary{{"images", Array{image("/a.dmg", "relative")}}}}}) {
        tool.info = answer;
        cleanUp();
        EXPECT_EQ(tool.done, onlyAsked);
    }
    tool.canRun = false;
    cleanUp();
    EXPECT_EQ(tool.done, onlyAsked);
}

}  // namespace
}  // namespace stowpocket
