// SPDX-License-Identifier: MIT
#include "platform/linux/session/ProgramLock.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <thread>

using namespace std::chrono_literals;

namespace stowpocket {
namespace {

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
    const ProgramLock second(path, 0ms);
    for (const std::optional<std::string>& holder : {second.holder(), ProgramLock::holderOf(path)}) {
        ASSERT_TRUE(holder);
        EXPECT_NE(holder->find(", display :17, "), std::string::npos) << *holder;
        EXPECT_TRUE(holder->ends_with(", process " + std::to_string(::getpid()))) << *holder;
    }
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
