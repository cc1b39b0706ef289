// SPDX-License-Identifier: MIT
#include "platform/linux/files/BookmarkRecord.h"
#include "platform/linux/files/LinuxBookmarks.h"
#include "platform/linux/files/Mounts.h"
#include "platform/posix/FileProbe.h"
#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"

#include <QAbstractEventDispatcher>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

#include <algorithm>
#include <limits>

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

TEST_F(LinuxBookmarksTest, followsFoldersThatWereRenamedLinksAndWhatIsInThem) {
    const Bytes file = bookmark("top/middle/low/file");
    const Bytes second = bookmark("top/middle/low/second");
    const Bytes whole = bookmarks.create(folder.url("top/middle/low")).value();
    std::filesystem::create_symlink("middle/low/file", folder.path("top/link"));
    const Bytes link = bookmarks.create(folder.url("top/link")).value();
    folder.rename("top/middle/low", "top/middle/deep");
    folder.rename("top/middle", "top/centre");
    folder.rename("top/link", "top/moved link");
    EXPECT_EQ(found(whole), "top/centre/deep*");
    EXPECT_EQ(found(link), "top/moved link*");
    folder.rename("top/centre/deep/second", "top/centre/deep/other name");
    EXPECT_EQ(found(second), "top/centre/deep/other name*");
    std::filesystem::create_directories(folder.path("top/middle/low/file"));
    EXPECT_EQ(found(file), "top/centre/deep/file*") << "not the folder in its place";
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
    folder.rename("a/file", "a/other");
    EXPECT_EQ(found(encodeBookmark(unborn)), "a/other*");
    ++unborn.identity.size;
    EXPECT_EQ(found(encodeBookmark(unborn)), "");
    --unborn.identity.size;
    unborn.identity.handle.back() = unborn.identity.handle.back() == '0' ? '1' : '0';
    EXPECT_EQ(found(encodeBookmark(unborn)), "");
}

TEST_F(LinuxBookmarksTest, takesAFileOnAnAbsentVolumeForWhereItWas) {
    BookmarkRecord unplugged = record("a/file");
    // Under a changed root the table may lack the root itself, and then there is nothing to record.
    const bool holdsRoot = std::ranges::find(*mounts.mounts(), "/", &Mount::point) != mounts.mounts()->end();
    EXPECT_TRUE(!holdsRoot || !unplugged.mountPoint.empty());
    std::filesystem::remove(folder.path("a/file"));
    unplugged.mountPoint = "/media/not mounted";
    EXPECT_EQ(found(encodeBookmark(unplugged)), "a/file");
    unplugged.mountPoint = "/";
    unplugged.volume = "00112233445566778899aabbccddeeff";
    EXPECT_EQ(found(encodeBookmark(unplugged)), "a/file");
}

TEST_F(LinuxBookmarksTest, searchStaysWithinItsLimitsAndMounts) {
    const BookmarkRecord sought = record("a/sought");
    Mounts mounted = *mounts.mounts();
    const auto isFound = [&](const SearchLimits& limits = {}) {
        return searchForFiles({sought}, {}, mounted, limits).at(0).has_value();
    };
    constexpr std::chrono::milliseconds none(0);
    folder.rename("a/sought", "a/renamed");
    EXPECT_TRUE(isFound({.entries = 0, .time = none})) << "in its own folder, however large that is";
    folder.rename("a/renamed", "a/net/renamed");
    EXPECT_FALSE(isFound({.entries = 0}) || isFound({.time = none}));
    mounted.push_back({9999, folder.path("a/net"), "nfs4"});
    EXPECT_FALSE(isFound());
}

TEST(MountChangesTest, tellsChangesOfPlaceFromChangesOfOptions) {
    const auto changes = [](const Mounts& before, const Mounts& after) {
        const MountChanges found = changesBetween(before, after);
        return std::pair(found.mounted, found.unmounted);
    };
    const Mount root{1, "/", "ext4"};
    const Mount a{2, "/a", "tmpfs"};
    EXPECT_EQ(changes({root, a}, {a, root}), std::pair(false, false));
    EXPECT_EQ(changes({root}, {root, a}), std::pair(true, false));
    EXPECT_EQ(changes({root, a}, {root, {3, "/a", "tmpfs"}}), std::pair(true, true)) << "another one in its place";
    EXPECT_EQ(changes({a}, {a, {3, "/a", "tmpfs"}}), std::pair(true, false)) << "one over the other";
}

TEST(MountTable, readsTheKernelsForm) {
    const std::pair<std::string, Mounts> table[] = {
        {"36 35 98:0 / /mnt rw,noatime master:1 - ext3 /dev/root rw\n", {{36, "/mnt", "ext3"}}},
        {"9 1 0:1 / /b rw shared:1 master:2 - nfs4 s o\n8 1 0:1 / /a rw - t s o",
         {{9, "/b", "nfs4"}, {8, "/a", "t"}}},
        {R"(1 1 0:1 / /a\040b\011\012\134\0401 rw - t s o)", {{1, "/a b\t\n\\ 1", "t"}}},
        {R"(1 1 0:1 / /a\999\777\-01\ rw - t s o)", {{1, R"(/a\999\777\-01\)", "t"}}},
        {"1 1 0:1 / /n\xFF rw - t s o", {{1, "/n\xFF", "t"}}},
        {"18446744073709551615 1 0:1 / / rw - t", {{std::numeric_limits<std::uint64_t>::max(), "/", "t"}}},
        {"1 1 0:1 / relative rw - t\n1 1 0:1 / /cut rw\n1 1 0:1 /\n1\n\n\n   ", {}},
        {"", {}},
    };
    for (const auto& [text, mounts] : table)
        EXPECT_EQ(parseMounts(text), mounts) << text;
}

TEST(MountTable, knowsWhatMayHang) {
    for (const char* type : {"nfs", "nfs4", "cifs", "fuse", "fuse.sshfs", "autofs", "smbfs"})
        EXPECT_TRUE(mayHang(type)) << type;
    for (const char* type : {"ext4", "tmpfs", "fuseblk", "overlay", "vfat", ""})
        EXPECT_FALSE(mayHang(type)) << type;
}

TEST(MountTable, findsTheHangingMountBehindLinks) {
    const TemporaryFolder folder;
    const Mounts mounts = {{1, "/", "ext4"}, {2, folder.path("net/dead"), "fuse.sshfs"}};
    folder.write("plain/file");
    std::filesystem::create_directories(folder.path("net/deader"));
    std::filesystem::create_directory_symlink("../net/dead/inside", folder.path("plain/relative"));
    std::filesystem::create_directory_symlink(folder.path("plain/relative"), folder.path("absolute"));
    std::filesystem::create_symlink("loop", folder.path("loop"));
    for (const std::string name : {"net/dead", "net/dead/x/y", "plain/relative/x", "absolute/x", "plain/../net/dead"})
        EXPECT_EQ(hangingMountOn(mounts, folder.path(name)), folder.path("net/dead")) << name;
    for (const std::string name :
         {"net", "net/deader", "plain/file", "absent/x", "loop/x", "plain/relative/../../.."})
        EXPECT_EQ(hangingMountOn(mounts, folder.path(name)).has_value(), name.ends_with("..")) << name;
    const Mounts covered = {mounts[1], {3, mounts[1].point, "ext4"}};
    EXPECT_EQ(hangingMountOn(covered, folder.path("net/dead/x")), std::nullopt);
}

TEST(MountInfoVolumes, tellOnceOfEachVolumeThatComesOrGoes) {
    // In a mount table of this process alone.
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        GTEST_SKIP() << "mounting is not permitted here";
    const TemporaryFolder folder;
    MountInfoVolumes volumes;
    int mounted = 0;
    int unmounted = 0;
    const Subscription mount = volumes.didMount().connect([&mounted] { ++mounted; });
    const Subscription unmount = volumes.didUnmount().connect([&unmounted] { ++unmounted; });
    const char* const place = folder.path().c_str();
    ASSERT_EQ(::mount("none", place, "tmpfs", 0, nullptr), 0);
    EXPECT_TRUE(comesTrue([&] { return mounted == 1; }));
    EXPECT_EQ(std::ranges::count(*MountTable().mounts(), folder.path(), &Mount::point), 1);
    EXPECT_EQ(unmounted, 0);
    ASSERT_EQ(::mount("none", place, nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    ASSERT_EQ(::umount(place), 0) << "nothing is kept open there";
    EXPECT_TRUE(comesTrue([&] { return unmounted == 1; }));
    EXPECT_TRUE(comesTrue([] { return !QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents); }))
        << "nothing wakes it up at rest";
    EXPECT_EQ(mounted, 1) << "other options are no other volume";
}

}  // namespace
}  // namespace stowpocket
