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

using Names = std::vector<std::string>;

class PosixFileManagerTest : public testing::Test {
protected:
    [[nodiscard]] mode_t mode(const std::string& name) const {
        struct stat status {};
        return ::lstat(folder.path(name).c_str(), &status) == 0 ? status.st_mode & 07777u : 0;
    }
    void link(const std::string& target, const std::string& name) const {
        fs::create_symlink(target, folder.path(name));
    }
    bool make(const std::string& name) { return files.createDirectory(folder.url(name)); }
    bool copy(const std::string& from, const std::string& to) {
        return files.copyItem(from.starts_with('/') ? *FileURL::fromPath(from) : folder.url(from), folder.url(to));
    }
    bool remove(const std::string& name) { return files.removeItem(folder.url(name)); }

    TemporaryFolder folder;
    FileProbe probe{[](const std::string&) { return std::nullopt; }};
    PosixFileManager files{probe};
};

TEST_F(PosixFileManagerTest, countsALinkByItsTarget) {
    folder.write("file", "123");
    link("file", "link");
    link("absent", "dangling");
    EXPECT_TRUE(files.fileExists(folder.url("link")));
    EXPECT_EQ(files.attributes(folder.url("link")).value_or(FileAttributes{}).size, 4) << "of the link";
    for (const std::string& absent : {std::string("dangling"), std::string("file/below"), std::string(5000, 'n')})
        EXPECT_FALSE(files.fileExists(folder.url(absent)));
}

TEST_F(PosixFileManagerTest, makesPrivateFolders) {
    for (int time = 0; time < 2; ++time)
        EXPECT_TRUE(make("a/b/c"));
    EXPECT_EQ(mode("a"), 0700u);
    EXPECT_EQ(mode("a/b/c"), 0700u);
    folder.write("file");
    link("a", "link");
    EXPECT_FALSE(make("file") || make("link"));
}

TEST_F(PosixFileManagerTest, copiesWholeFolders) {
    const std::string large(300'000, 'x');
    folder.write("from/deep/er/file", large);
    folder.write("from/program");
    fs::create_directory(folder.path("from/empty"));
    link("/nowhere", "from/link");
    ASSERT_EQ(::chmod(folder.path("from/program").c_str(), 06755), 0);
    ASSERT_EQ(::chmod(folder.path("from/deep").c_str(), 0550), 0);

    EXPECT_TRUE(copy("from", "to"));
    EXPECT_EQ(folder.names("to"), (Names{"deep", "empty", "link", "program"}));
    EXPECT_EQ(folder.read("to/deep/er/file"), large);
    EXPECT_EQ(fs::read_symlink(folder.path("to/link")), "/nowhere");
    EXPECT_EQ(mode("to/program"), 0755u);
    EXPECT_EQ(mode("to/deep"), 0550u);
    EXPECT_TRUE(copy("/proc/self/mountinfo", "copy"));
    EXPECT_FALSE(folder.read("copy").empty()) << "the kernel tells no size of what it makes up";
}

TEST_F(PosixFileManagerTest, leavesNothingOfAFailedCopy) {
    std::string deep = "deep";
    for (int level = 0; level <= maxTreeDepth; ++level)
        deep += "/d";
    fs::create_directories(folder.path(deep));
    EXPECT_FALSE(remove("deep"));
    folder.write("from/a");
    ASSERT_EQ(::mkfifo(folder.path("from/pipe").c_str(), 0600), 0);
    for (const char* const from : {"deep", "from", "from/pipe", "/dev/zero"})
        EXPECT_FALSE(copy(from, "to")) << from;
    ASSERT_TRUE(remove("from/pipe"));
    EXPECT_FALSE(copy("from", "from/inside"));
    EXPECT_EQ(folder.names(), (Names{"deep", "from"}));
}

TEST_F(PosixFileManagerTest, neverWritesThroughALinkOrOverAFile) {
    folder.write("from/file", "new");
    folder.write("victim", "old");
    link("victim", "link");
    link("unborn", "dangling");
    fs::create_directory(folder.path("taken"));
    EXPECT_FALSE(copy("from/file", "link") || copy("from/file", "dangling") || copy("from", "taken"));
    EXPECT_EQ(folder.read("victim"), "old");
    EXPECT_TRUE(folder.names("taken").empty());
}

TEST_F(PosixFileManagerTest, removesTreesButNotWhatLinksLeadTo) {
    folder.write("kept/file");
    folder.write("tree/deep/file");
    link(folder.path("kept"), "tree/link");
    link("kept", "link");
    EXPECT_TRUE(remove("tree") && remove("link") && remove("kept/file/below"));
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

TEST(DurableFile, replacesWhatALinkLeadsToUnlessTheDiskIsFull) {
    const TemporaryFolder folder;
    folder.write("dotfiles/real", "old");
    fs::create_symlink("dotfiles/real", folder.path("second"));
    fs::create_symlink(folder.path("second"), folder.path("first"));
    fs::create_symlink("dotfiles/later", folder.path("dangling"));
    for (const std::string name : {"first", "dangling"}) {
        EXPECT_FALSE(replaceFile(folder.path(name), "by " + name));
        EXPECT_TRUE(fs::is_symlink(folder.path(name)));
    }
    EXPECT_EQ(folder.read("dotfiles/real"), "by first");
    EXPECT_EQ(folder.read("dotfiles/later"), "by dangling");
    EXPECT_EQ(fs::status(folder.path("first")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(replaceFile(folder.path("absent/file"), "x"), std::errc::no_such_file_or_directory);
    const FullDisk full;
    EXPECT_EQ(replaceFile(folder.path("first"), std::string(100'000, 'n')), std::errc::file_too_large);
    EXPECT_EQ(folder.read("dotfiles/real"), "by first");
    EXPECT_EQ(folder.names("dotfiles"), (Names{"later", "real"}));
}

TEST(DurableFile, removesOnlyWhatDeadWritersLeft) {
    const TemporaryFolder folder;
    const Names kept{".file." + std::to_string(::getppid()) + ".new", ".file.12x.new", ".file.new",
                     ".other.2147483647.new"};
    folder.write(".file.2147483647.new");
    for (const std::string& name : kept)
        folder.write(name);
    removeUnfinishedReplacements(folder.path("file"));
    EXPECT_TRUE(std::ranges::is_permutation(folder.names(), kept));
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

/// Asks until there is an answer.
int answerTo(FileProbe& probe, const std::string& path) {
    for (;;) {
        if (const std::optional<int> answer = probe.ask<int>(path, [] { return 2; }))
            return *answer;
    }
}

TEST(FileProbe, holdsOneThreadForAMountThatHangsAndTrustsTheOthers) {
    FileProbe probe([](const std::string& path) { return std::optional(path.substr(0, path.find('/', 1))); },
                    {5ms, 10ms});
    std::atomic<int> waits{0};
    probe.setRunWait([&](const std::function<bool()>& wait) { return ++waits, wait(); });
    Hanging dead;
    const std::function<int()> question = dead.question();
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 5; ++thread)
            threads.emplace_back([&] {
                for (int time = 0; time < 20; ++time)
                    EXPECT_EQ(probe.ask<int>("/dead/file", question), std::nullopt);
            });
    }
    EXPECT_LE(dead.calls, 1);
    EXPECT_EQ(waits, 100) << "the threads of the background";
    EXPECT_EQ(answerTo(probe, "/alive/file"), 2);
    dead.release();
    EXPECT_EQ(answerTo(probe, "/dead/file"), 2) << "trusted again";
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
    const auto resolved = bookmarks.resolve(std::vector{bookmark, bookmark});
    ASSERT_TRUE(resolved[0] && resolved[1]);
    EXPECT_EQ(resolved[0]->url, folder.url("file"));
    dead.release();
    EXPECT_EQ(answerTo(probe, "/"), 2);
}

}  // namespace
}  // namespace stowpocket
