// SPDX-License-Identifier: MIT
#include "platform/linux/files/PosixFileManager.h"

#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "platform/posix/FileProbe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;

class PosixFileManagerTest : public testing::Test {
protected:
    [[nodiscard]] mode_t mode(const std::string& name) const {
        struct stat status {};
        return ::lstat(folder.path(name).c_str(), &status) == 0 ? status.st_mode & 07777u : 0;
    }
    TemporaryFolder folder;
    FileProbe probe{[](const std::string&) { return std::nullopt; }};
    PosixFileManager files{probe};
};

TEST_F(PosixFileManagerTest, countsALinkByItsTarget) {
    folder.write("file", "123");
    fs::create_symlink("file", folder.path("link"));
    fs::create_symlink("absent", folder.path("dangling"));
    EXPECT_TRUE(files.fileExists(folder.url("link")));
    EXPECT_EQ(files.attributes(folder.url("link")).value_or(FileAttributes{}).size, 4) << "of the link";
    EXPECT_FALSE(files.fileExists(folder.url("dangling")));
    EXPECT_FALSE(files.fileExists(folder.url("file/below")));
    EXPECT_FALSE(files.fileExists(folder.url(std::string(5000, 'n'))));
}

TEST_F(PosixFileManagerTest, makesPrivateFolders) {
    EXPECT_TRUE(files.createDirectory(folder.url("a/b/c")));
    EXPECT_TRUE(files.createDirectory(folder.url("a/b/c")));
    EXPECT_EQ(mode("a"), 0700u);
    EXPECT_EQ(mode("a/b/c"), 0700u);
    folder.write("file");
    fs::create_directory_symlink("a", folder.path("link"));
    EXPECT_FALSE(files.createDirectory(folder.url("file")));
    EXPECT_FALSE(files.createDirectory(folder.url("link")));
    EXPECT_TRUE(files.createDirectory(folder.url("link/d")));
    EXPECT_TRUE(fs::is_directory(folder.path("a/d")));
}

TEST_F(PosixFileManagerTest, copiesWholeFolders) {
    folder.write("from/deep/er/file", std::string(300'000, 'x'));
    folder.write("from/program");
    fs::create_directory(folder.path("from/empty"));
    fs::create_symlink("/nowhere", folder.path("from/link"));
    ASSERT_EQ(::chmod(folder.path("from/program").c_str(), 06755), 0);
    ASSERT_EQ(::chmod(folder.path("from/deep").c_str(), 0550), 0);

    EXPECT_TRUE(files.copyItem(folder.url("from"), folder.url("to")));
    EXPECT_EQ(folder.read("to/deep/er/file"), std::string(300'000, 'x'));
    EXPECT_TRUE(fs::is_empty(folder.path("to/empty")));
    EXPECT_EQ(fs::read_symlink(folder.path("to/link")), "/nowhere");
    EXPECT_EQ(mode("to/program"), 0755u);
    EXPECT_EQ(mode("to/deep"), 0550u);
    EXPECT_TRUE(files.copyItem(*FileURL::fromPath("/proc/self/mountinfo"), folder.url("copy")));
    EXPECT_FALSE(folder.read("copy").empty()) << "the kernel tells no size of what it makes up";
}

TEST_F(PosixFileManagerTest, leavesNothingOfAFailedCopy) {
    folder.write("from/a");
    ASSERT_EQ(::mkfifo(folder.path("from/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(files.copyItem(folder.url("from"), folder.url("to")));
    EXPECT_FALSE(fs::exists(folder.path("to")));
    EXPECT_FALSE(files.copyItem(folder.url("from/pipe"), folder.url("to")));
    EXPECT_FALSE(files.copyItem(*FileURL::fromPath("/dev/zero"), folder.url("to")));
    EXPECT_FALSE(files.copyItem(folder.url("from"), folder.url("from/inside")));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"from"});
}

TEST_F(PosixFileManagerTest, neverWritesThroughALinkOrOverAFile) {
    folder.write("from/file", "new");
    folder.write("victim", "old");
    fs::create_symlink("victim", folder.path("link"));
    fs::create_symlink("unborn", folder.path("dangling"));
    fs::create_directory(folder.path("taken"));
    EXPECT_FALSE(files.copyItem(folder.url("from/file"), folder.url("link")));
    EXPECT_FALSE(files.copyItem(folder.url("from/file"), folder.url("dangling")));
    EXPECT_FALSE(files.copyItem(folder.url("from"), folder.url("taken")));
    EXPECT_EQ(folder.read("victim"), "old");
    EXPECT_TRUE(fs::is_symlink(folder.path("dangling")));
    EXPECT_FALSE(fs::exists(folder.path("unborn")));
    EXPECT_TRUE(fs::exists(folder.path("taken")));
}

TEST_F(PosixFileManagerTest, removesTreesButNotWhatLinksLeadTo) {
    folder.write("kept/file");
    folder.write("tree/deep/file");
    fs::create_directory_symlink(folder.path("kept"), folder.path("tree/link"));
    fs::create_directory_symlink("kept", folder.path("link"));
    EXPECT_TRUE(files.removeItem(folder.url("tree")));
    EXPECT_TRUE(files.removeItem(folder.url("link")));
    EXPECT_TRUE(files.removeItem(folder.url("kept/file/below")));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"kept"});
    EXPECT_EQ(folder.read("kept/file"), "contents");
}

TEST_F(PosixFileManagerTest, goesOnlySoDeep) {
    std::string deep = "top";
    for (int level = 0; level <= maxTreeDepth; ++level)
        deep += "/d";
    fs::create_directories(folder.path(deep));
    EXPECT_FALSE(files.copyItem(folder.url("top"), folder.url("copy")));
    EXPECT_FALSE(files.removeItem(folder.url("top")));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"top"});
}

TEST_F(PosixFileManagerTest, followsTheBaseDirectoryRules) {
    ::setenv("HOME", "/home/someone", 1);
    ::setenv("XDG_DATA_HOME", "relative", 1);
    ::setenv("XDG_CONFIG_HOME", "/config", 1);
    EXPECT_EQ(files.applicationSupportDirectory(), FileURL::fromPath("/home/someone/.local/share"));
    EXPECT_EQ(LinuxPreferenceStore::defaultPath(), "/config/stowpocket/preferences.plist");
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace stowpocket
