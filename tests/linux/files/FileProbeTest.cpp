// SPDX-License-Identifier: MIT
#include "platform/posix/FileProbe.h"

#include "platform/linux/files/LinuxBookmarks.h"
#include "platform/linux/files/Mounts.h"
#include "platform/linux/files/PosixFileManager.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>

using namespace std::chrono_literals;

namespace stowpocket {
namespace {

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

TEST(FileProbe, asksOnAnotherThreadWhereAFileSystemCouldHang) {
    const std::thread::id here = std::this_thread::get_id();
    const std::function<std::thread::id()> question = [] { return std::this_thread::get_id(); };
    FileProbe network(firstFolder, {20s, 20s});
    const auto answer = network.ask("/net/file", question);
    EXPECT_TRUE(answer && *answer != here);
    FileProbe local([](const std::string&) { return std::nullopt; }, {0ms, 0ms});
    EXPECT_EQ(local.ask("/home", question), here);
}

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
