// SPDX-License-Identifier: MIT
#include "platform/linux/files/DurableFile.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

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

}  // namespace
}  // namespace stowpocket
