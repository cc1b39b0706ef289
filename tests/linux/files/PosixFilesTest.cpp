// SPDX-License-Identifier: MIT
#include "platform/linux/files/DurableFile.h"
#include "platform/linux/files/LinuxBookmarks.h"
#include "platform/linux/files/Mounts.h"
#include "platform/linux/files/PosixFileManager.h"
#include "platform/linux/preferences/LinuxPreferenceStore.h"
#include "platform/posix/FileProbe.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <future>

using namespace std::chrono_literals;

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
    std::string deep = "deep";
    for (int level = 0; level <= maxTreeDepth; ++level)
        deep += "/d";
    fs::create_directories(folder.path(deep));
    EXPECT_FALSE(files.copyItem(folder.url("deep"), folder.url("to")));
    EXPECT_FALSE(files.removeItem(folder.url("deep")));
    folder.write("from/a");
    ASSERT_EQ(::mkfifo(folder.path("from/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(files.copyItem(folder.url("from"), folder.url("to")));
    EXPECT_FALSE(fs::exists(folder.path("to")));
    EXPECT_FALSE(files.copyItem(folder.url("from/pipe"), folder.url("to")));
    EXPECT_FALSE(files.copyItem(*FileURL::fromPath("/dev/zero"), folder.url("to")));
    ASSERT_TRUE(files.removeItem(folder.url("from/pipe")));
    EXPECT_FALSE(files.copyItem(folder.url("from"), folder.url("from/inside")));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"deep", "from"}));
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

TEST_F(PosixFileManagerTest, followsTheBaseDirectoryRules) {
    ::setenv("HOME", "/home/someone", 1);
    ::setenv("XDG_DATA_HOME", "relative", 1);
    ::setenv("XDG_CONFIG_HOME", "/config", 1);
    EXPECT_EQ(files.applicationSupportDirectory(), FileURL::fromPath("/home/someone/.local/share"));
    EXPECT_EQ(LinuxPreferenceStore::defaultPath(), "/config/stowpocket/preferences.plist");
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_CONFIG_HOME");
}

using Names = std::vector<std::string>;

TEST(DurableFile, keepsTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    ASSERT_FALSE(replaceFile(folder.path("file"), "old"));
    std::error_code error;
    {
        const FullDisk full;
        error = replaceFile(folder.path("file"), std::string(100'000, 'n'));
    }
    EXPECT_EQ(error, std::errc::file_too_large);
    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_EQ(folder.names(), Names{"file"});
    EXPECT_FALSE(replaceFile(folder.path("file"), "new"));
    EXPECT_EQ(folder.read("file"), "new");
    EXPECT_EQ(replaceFile(folder.path("absent/file"), "x"), std::errc::no_such_file_or_directory);
    struct stat status {};
    ASSERT_EQ(::stat(folder.path("file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0600u) << "for the user alone";
}

TEST(DurableFile, replacesWhatALinkLeadsTo) {
    const TemporaryFolder folder;
    folder.write("dotfiles/real", "old");
    std::filesystem::create_symlink("dotfiles/real", folder.path("second"));
    std::filesystem::create_symlink(folder.path("second"), folder.path("first"));
    std::filesystem::create_symlink("dotfiles/later", folder.path("dangling"));
    EXPECT_FALSE(replaceFile(folder.path("first"), "new"));
    EXPECT_FALSE(replaceFile(folder.path("dangling"), "made"));
    EXPECT_EQ(folder.read("dotfiles/real"), "new");
    EXPECT_EQ(folder.read("dotfiles/later"), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("first")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("dangling")));
}

TEST(DurableFile, removesOnlyWhatDeadWritersLeft) {
    const TemporaryFolder folder;
    const std::string living = ".file." + std::to_string(::getppid()) + ".new";
    for (const std::string& name : {std::string(".file.2147483647.new"), living, std::string(".file.12x.new"),
                                    std::string(".file.new"), std::string(".other.2147483647.new")})
        folder.write(name);
    removeUnfinishedReplacements(folder.path("file"));
    EXPECT_EQ(folder.names().size(), 4u);
    EXPECT_FALSE(std::filesystem::exists(folder.path(".file.2147483647.new")));
}

std::optional<std::string> firstFolder(const std::string& path) {
    return path.substr(0, path.find('/', 1));
}

/// A call that hangs until it is let go, as one to a dead server does.
class Hanging {
public:
    [[nodiscard]] std::function<int()> question() {
        return [this, until = released_.get_future().share()] {
            ++calls;
            until.wait();
            return 1;
        };
    }
    void release() { released_.set_value(); }
    std::atomic<int> calls{0};

private:
    std::promise<void> released_;
};

TEST(FileProbe, holdsOneThreadForAMountThatHangsAndTrustsTheOthers) {
    FileProbe probe(firstFolder, {5ms, 10ms});
    std::atomic<int> waits{0};
    probe.setRunWait([&](const std::function<bool()>& wait) { return ++waits, wait(); });
    Hanging dead;
    const std::function<int()> question = dead.question();
    const auto askOften = [&] {
        for (int time = 0; time < 20; ++time)
            EXPECT_EQ(probe.ask<int>("/dead/file", question), std::nullopt);
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back(askOften);
    askOften();
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_LE(dead.calls, 1);
    EXPECT_EQ(waits, 80) << "the threads of the background";
    std::optional<int> answer;
    while (!answer)
        answer = probe.ask<int>("/alive/file", [] { return 3; });
    EXPECT_EQ(answer, 3);
    dead.release();
    for (answer.reset(); !answer;)  // until the mount is trusted again
        answer = probe.ask<int>("/dead/file", [] { return 2; });
    EXPECT_EQ(answer, 2);
}

TEST(FileProbe, makesFilesOnASilentMountCountAsThere) {
    const TemporaryFolder folder;
    folder.write("file");
    MountTable mounts;
    bool isNetwork = false;
    FileProbe probe([&](const std::string&) { return isNetwork ? std::optional<std::string>("/") : std::nullopt; },
                    {1ms, 1ms});
    PosixFileManager files(probe);
    LinuxBookmarks bookmarks(mounts, probe, {});
    const Bytes bookmark = bookmarks.create(folder.url("file")).value();
    folder.rename("file", "renamed");

    isNetwork = true;
    Hanging dead;
    EXPECT_EQ(probe.ask<int>("/", dead.question()), std::nullopt);
    EXPECT_TRUE(files.fileExists(folder.url("file")));
    EXPECT_TRUE(files.attributes(folder.url("file")));
    EXPECT_FALSE(files.createDirectory(folder.url("new")));
    EXPECT_FALSE(bookmarks.create(folder.url("renamed")));
    const auto resolved = bookmarks.resolve(std::vector{bookmark, bookmark});
    ASSERT_TRUE(resolved[0] && resolved[1]);
    EXPECT_EQ(resolved[0]->url, folder.url("file"));
    EXPECT_FALSE(resolved[0]->isStale);
    dead.release();
    while (!probe.ask<int>("/", [] { return 0; })) {
    }
}

}  // namespace
}  // namespace stowpocket
