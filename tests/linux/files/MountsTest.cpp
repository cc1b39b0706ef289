// SPDX-License-Identifier: MIT
#include "platform/linux/files/Mounts.h"
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

TEST(MountChangesTest, tellsChangesOfPlaceFromChangesOfOptions) {
    const auto changes = [](const Mounts& before, const Mounts& after) {
        const MountChanges found = changesBetween(before, after);
        return std::pair(found.mounted, found.unmounted);
    };
    const Mount root{1, "/", "ext4"};
    const Mount a{2, "/a", "tmpfs"};
    EXPECT_EQ(changes({root, a}, {a, root}), std::pair(false, false));
    EXPECT_EQ(changes({root}, {root, a}), std::pair(true, false));
    EXPECT_EQ(changes({root, a}, {root}), std::pair(false, true));
    EXPECT_EQ(changes({root, a}, {root, {2, "/b", "tmpfs"}}), std::pair(true, true)) << "moved";
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
