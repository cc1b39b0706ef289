// SPDX-License-Identifier: MIT
#include "platform/linux/storage/DurableFile.h"
#include "contracts/FullDisk.h"
#include "contracts/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <random>

namespace stowpocket {
namespace {

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
}

TEST(DurableFile, isForTheUserAlone) {
    const TemporaryFolder folder;
    ASSERT_FALSE(replaceFile(folder.path("file"), "x"));
    struct stat status {};
    ASSERT_EQ(::stat(folder.path("file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0600u);
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

TEST(DurableFile, failsWithoutAFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(replaceFile(folder.path("absent/file"), "x"), std::errc::no_such_file_or_directory);
}

/// Replaces the file with one text and the other, and reports each time, until it is killed.
[[noreturn]] void writeForever(const std::string& path, const std::array<std::string, 2>& texts, int report) {
    for (std::size_t turn = 0;; ++turn) {
        if (replaceFile(path, texts[turn % 2]) || ::write(report, "x", 1) != 1)
            ::_exit(1);
    }
}

TEST(DurableFile, isWholeWheneverItsWriterIsKilled) {
    const TemporaryFolder folder;
    const std::array<std::string, 2> texts = {std::string(300'000, 'a'), std::string(200'000, 'b')};
    ASSERT_FALSE(replaceFile(folder.path("file"), texts[1]));
    std::mt19937 random(std::random_device{}());
    for (int cycle = 0; cycle < 100; ++cycle) {
        std::array<int, 2> report{};
        ASSERT_EQ(::pipe(report.data()), 0);
        const pid_t writer = ::fork();
        if (writer == 0)
            writeForever(folder.path("file"), texts, report[1]);
        std::array<char, 4> progress{};
        EXPECT_GT(::read(report[0], progress.data(), 1 + random() % 3), 0);
        for (std::uint_fast32_t spin = random() % 2'000'000; spin > 0; --spin)
            std::atomic_signal_fence(std::memory_order_seq_cst);
        ::kill(writer, SIGKILL);
        ASSERT_EQ(::waitpid(writer, nullptr, 0), writer);
        ::close(report[0]);
        ::close(report[1]);
        const std::string found = folder.read("file");
        ASSERT_TRUE(found == texts[0] || found == texts[1]) << cycle << ": " << found.size();
    }
    removeUnfinishedReplacements(folder.path("file"));
    EXPECT_EQ(folder.names(), Names{"file"});
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

}  // namespace
}  // namespace stowpocket
