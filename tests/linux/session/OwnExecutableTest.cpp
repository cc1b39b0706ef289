// SPDX-License-Identifier: MIT
#include "platform/linux/session/OwnExecutable.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace stowpocket
