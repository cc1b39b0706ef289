// SPDX-License-Identifier: MIT
#include "platform/linux/files/LinuxBookmarks.h"

#include "platform/linux/files/BookmarkRecord.h"
#include "platform/linux/files/Mounts.h"
#include "platform/posix/FileProbe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace stowpocket {
namespace {

using Answer = std::optional<ResolvedBookmark>;

class LinuxBookmarksTest : public testing::Test {
protected:
    [[nodiscard]] Bytes bookmark(const std::string& name) {
        folder.write(name);
        return bookmarks.create(folder.url(name)).value();
    }
    [[nodiscard]] BookmarkRecord record(const std::string& name) { return decodeBookmark(bookmark(name)).value(); }
    [[nodiscard]] Answer resolve(const Bytes& data) {
        const Answer answer = bookmarks.resolve(std::span(&data, 1)).at(0);
        return answer && answer->isToBeSought ? bookmarks.search(std::span(&data, 1)).at(0) : answer;
    }
    [[nodiscard]] std::string found(const Bytes& data) {
        const Answer answer = resolve(data);
        return answer ? answer->url.path().substr(folder.path().size() + 1) + (answer->isStale ? "*" : "") : "";
    }

    TemporaryFolder folder;
    MountTable mounts;
    FileProbe probe{[](const std::string&) { return std::nullopt; }};
    LinuxBookmarks bookmarks{mounts, probe, {{folder.path("Documents"), 3}}};
};

TEST_F(LinuxBookmarksTest, followsAFileOfAnyNameToNearbyFoldersButNotIntoTrashOrHiddenOnes) {
    const std::string odd = "d\xFFr/100% \n\"\\\xC3\xA9#?;\x01";
    for (const auto& [from, to, isFollowed] :
         {std::tuple<std::string, std::string, bool>{"a/b/moved", "a/c/new name", true},
          {"a/b/far", "Documents/1/2/3/far", true},
          {"a/b/too far", "Documents/1/2/3/4/too far", false},
          {"a/b/trashed", "a/Trash/files/trashed", false},
          {"a/b/hidden", "a/.cache/hidden", false},
          {odd, "d\xFFr/\xFE", true}}) {
        const Bytes moved = bookmark(from);
        EXPECT_EQ(found(moved), from);
        folder.rename(from, to);
        EXPECT_EQ(found(moved), isFollowed ? to + '*' : "");
    }
}

TEST_F(LinuxBookmarksTest, followsFoldersThatWereRenamed) {
    const Bytes file = bookmark("top/middle/low/file");
    const Bytes second = bookmark("top/middle/low/second");
    folder.rename("top/middle/low", "top/middle/deep");
    folder.rename("top/middle", "top/centre");
    EXPECT_EQ(found(file), "top/centre/deep/file*");
    folder.rename("top/centre/deep/second", "top/centre/deep/other name");
    EXPECT_EQ(found(second), "top/centre/deep/other name*");
}

TEST_F(LinuxBookmarksTest, doesNotTakeAFolderForTheFile) {
    const Bytes file = bookmark("a/file");
    folder.rename("a/file", "a/kept");
    std::filesystem::create_directory(folder.path("a/file"));
    EXPECT_EQ(found(file), "a/kept*");
    std::filesystem::remove(folder.path("a/kept"));
    EXPECT_EQ(found(file), "");
}

TEST_F(LinuxBookmarksTest, doesNotTakeAReusedInodeForTheFile) {
    BookmarkRecord reused = record("a/file");
    ASSERT_TRUE(reused.identity.inode.birth);
    reused.identity.inode.birth->nanoseconds ^= 1u;
    EXPECT_EQ(found(encodeBookmark(reused)), "a/file*");
    folder.rename("a/file", "a/other");
    EXPECT_EQ(found(encodeBookmark(reused)), "");
}

TEST_F(LinuxBookmarksTest, wantsMoreProofWithoutAMomentOfBirth) {
    BookmarkRecord unborn = record("a/file");
    unborn.identity.inode.birth.reset();
    if (unborn.identity.handle.empty())
        GTEST_SKIP() << "the file system of the temporary folder gives no handles";
    EXPECT_EQ(found(encodeBookmark(unborn)), "a/file");
    folder.rename("a/file", "a/other");
    EXPECT_EQ(found(encodeBookmark(unborn)), "a/other*");
    BookmarkRecord grown = unborn;
    grown.identity.size += 1;
    EXPECT_EQ(found(encodeBookmark(grown)), "");
    unborn.identity.handle.back() = unborn.identity.handle.back() == '0' ? '1' : '0';
    EXPECT_EQ(found(encodeBookmark(unborn)), "");
}

TEST_F(LinuxBookmarksTest, takesAFileOnAnAbsentVolumeForWhereItWas) {
    BookmarkRecord unplugged = record("a/file");
    // Under a changed root the table may lack the root itself, and then there is nothing to record.
    const bool holdsRoot = std::ranges::find(*mounts.mounts(), "/", &Mount::point) != mounts.mounts()->end();
    EXPECT_TRUE(!holdsRoot || !unplugged.mountPoint.empty());
    std::filesystem::remove(folder.path("a/file"));
    EXPECT_EQ(found(encodeBookmark(unplugged)), "");
    unplugged.mountPoint = "/media/not mounted";
    EXPECT_EQ(found(encodeBookmark(unplugged)), "a/file");
    unplugged.mountPoint = "/";
    unplugged.volume = "00112233445566778899aabbccddeeff";
    EXPECT_EQ(found(encodeBookmark(unplugged)), "a/file");
}

TEST_F(LinuxBookmarksTest, bookmarksFoldersAndLinksThemselves) {
    const Bytes inside = bookmark("a/folder/file");
    const Bytes whole = bookmarks.create(folder.url("a/folder")).value();
    std::filesystem::create_symlink("folder/file", folder.path("a/link"));
    const Bytes link = bookmarks.create(folder.url("a/link")).value();
    folder.rename("a/folder", "a/moved");
    folder.rename("a/link", "a/moved link");
    EXPECT_EQ(found(whole), "a/moved*");
    EXPECT_EQ(found(link), "a/moved link*");
    EXPECT_FALSE(bookmarks.create(folder.url("a/moved link")));
}

TEST_F(LinuxBookmarksTest, searchStaysWithinItsLimitsAndMounts) {
    const BookmarkRecord sought = record("a/sought");
    const auto isFound = [&](const Mounts& mounted, const SearchLimits& limits = {}) {
        return searchForFiles({sought}, {}, mounted, limits).at(0).has_value();
    };
    constexpr std::chrono::milliseconds none(0);
    for (int index = 0; index < 200; ++index)
        folder.write("a/" + std::to_string(index));
    folder.rename("a/sought", "a/renamed");
    EXPECT_TRUE(isFound(*mounts.mounts(), {.entries = 0, .time = none}))
        << "in its own folder, however large that is";
    EXPECT_FALSE(isFound(*mounts.mounts(), {.timeInOwnFolders = none, .entries = 0}));
    folder.rename("a/renamed", "a/net/renamed");
    EXPECT_TRUE(isFound(*mounts.mounts()));
    EXPECT_FALSE(isFound(*mounts.mounts(), {.entries = 0}));
    EXPECT_FALSE(isFound(*mounts.mounts(), {.time = none}));
    Mounts withNet = *mounts.mounts();
    withNet.push_back({9999, folder.path("a/net"), "nfs4"});
    EXPECT_FALSE(isFound(withNet));
}

TEST_F(LinuxBookmarksTest, refusesWhatIsNoBookmark) {
    for (const std::string json :
         {"", "[]", "{}", "{\"version\":1}", R"({"version":1,"type":"file","path":"relative/path"})",
          R"({"version":1,"type":"door","path":"file:///x"})", R"({"version":2,"type":"file","path":"file:///x"})",
          R"({"version":1,"type":7,"path":["file:///x"]})"})
        EXPECT_FALSE(resolve(Bytes(json.begin(), json.end()))) << json;
}

}  // namespace
}  // namespace stowpocket
