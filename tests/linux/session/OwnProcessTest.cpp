// SPDX-License-Identifier: MIT
#include "platform/linux/session/OwnProcess.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace stowpocket {
namespace {

TEST(OwnExecutableTest, isTheAppImageOnlyForCodeInsideIt) {
    const auto image = "/home/u/Stow pocket.AppImage";
    EXPECT_EQ(executableToStart("/tmp/.mount_x/usr/bin/stowpocket", image, "/tmp/.mount_x"), image);
    EXPECT_EQ(executableToStart("/tmp/.mount_x/usr/bin/stowpocket", image, "/tmp/.mount_x/"), image);
    for (const char* folder : {"/usr/b", "/opt", "", "/"})
        EXPECT_EQ(executableToStart("/usr/bin/stowpocket", image, folder), "/usr/bin/stowpocket")
            << "inherited from whoever started it: " << folder;
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

}  // namespace
}  // namespace stowpocket
