// SPDX-License-Identifier: MIT
#include "platform/qt/QtChildProcess.h"
#include "platform/qt/QtTrash.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace stowpocket {
namespace {

TEST(QtChildProcess, endsWhatCannotBeStartedOrDoesNotEnd) {
    QtChildProcess process({300ms, 10});
    EXPECT_EQ(process.run("/bin/echo", {"a b", "$c"}), (Bytes{'a', ' ', 'b', ' ', '$', 'c', '\n'}));
    EXPECT_EQ(process.run("/usr/bin/yes", {}), std::nullopt) << "more than ten";
    EXPECT_EQ(process.run("/bin/sleep", {"60"}), std::nullopt);
    EXPECT_EQ(process.run("/nowhere/tool", {}), std::nullopt);
    EXPECT_EQ(process.run("/bin/false", {}), Bytes());
}

TEST(QtTrash, keepsWhatItTakes) {
    const TemporaryFolder folder;
    folder.write("a b.dmg");
    ::setenv("XDG_DATA_HOME", folder.path("data").c_str(), 1);
    EXPECT_TRUE(QtTrash().trashItem(folder.url("a b.dmg")));
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"data"});
    EXPECT_EQ(folder.read("data/Trash/files/a b.dmg"), "contents");
}

}  // namespace
}  // namespace stowpocket
