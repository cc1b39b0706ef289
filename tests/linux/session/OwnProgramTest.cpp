// SPDX-License-Identifier: MIT
#include "platform/linux/session/OwnProcess.h"
#include "platform/linux/session/ProgramLock.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

TEST(OwnExecutableTest, isTheAppImageOnlyForCodeInsideIt) {
    const auto image = "/home/u/Stow pocket.AppImage";
    EXPECT_EQ(executableToStart("/tmp/.mount_x/usr/bin/stowpocket", image, "/tmp/.mount_x"), image);
    EXPECT_EQ(executableToStart("/tmp/.mount_x/usr/bin/stowpocket", image, "/tmp/.mount_x/"), image);
    for (const char* folder : {"/usr/b", "", "/"})  // inherited from whoever started it
        EXPECT_EQ(executableToStart("/usr/bin/stowpocket", image, folder), "/usr/bin/stowpocket") << folder;
    EXPECT_EQ(executableToStart("/usr/bin/stowpocket (deleted)", "", ""), "/usr/bin/stowpocket");
    EXPECT_TRUE(ownExecutable().ends_with("/linux_tests")) << ownExecutable();
}

TEST(ExitHandlerDeathTest, runsOnlyWhenTheProcessEndsBeforeIt) {
    const auto say = [](const char* text) { return [text] { std::fputs(text, stderr); }; };
    EXPECT_EXIT(
        {
            { const ExitHandler ended(say("over ")); }
            const ExitHandler handler(say("saved"));
            std::exit(3);
        },
        testing::ExitedWithCode(3), "^saved$");
}

TEST(ProgramLock, tellsTheSecondProgramWhereTheFirstRuns) {
    const TemporaryFolder folder;
    const std::string path = ProgramLock::pathBeside(folder.path("new/folder/preferences.plist"));
    EXPECT_FALSE(ProgramLock::holderOf(path));
    ::setenv("DISPLAY", ":1234567", 1);
    std::optional<ProgramLock> first(path);
    first.reset();
    ::setenv("DISPLAY", ":17", 1);
    first.emplace(path);  // its place is shorter than the one before
    EXPECT_FALSE(first->holder());
    ::setenv("DISPLAY", ":18", 1);
    const std::string place = ", display :17, process " + std::to_string(::getpid());
    while (!ProgramLock::holderOf(path).value().ends_with(place)) {  // a thread of its own writes it
    }
    EXPECT_TRUE(ProgramLock(path, 0ms).holder().value().ends_with(place));
    first.reset();
    EXPECT_FALSE(ProgramLock::holderOf(path));
    EXPECT_FALSE(ProgramLock(path, 0ms).holder());
    ::unsetenv("DISPLAY");
}

TEST(ProgramLock, waitsForAProgramThatIsJustEnding) {
    const TemporaryFolder folder;
    std::optional<ProgramLock> ending(folder.path("lock"));
    std::thread end([&ending] { ending.reset(); });
    EXPECT_FALSE(ProgramLock(folder.path("lock"), 20s).holder());
    end.join();
}

}  // namespace
}  // namespace stowpocket
