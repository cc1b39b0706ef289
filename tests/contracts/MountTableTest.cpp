// SPDX-License-Identifier: MIT
#include "platform/linux/storage/MountTable.h"

#include "contracts/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

#include <algorithm>

namespace stowpocket {
namespace {

TEST(MountTable, readsTheKernelsForm) {
    const Mounts mounts = parseMounts("22 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw\n"
                                      "rubbish\n"
                                      "36 22 0:29 / /media/a\\040b\\134c\\9 rw master:2 shared:3 - nfs4 host:/x rw\n"
                                      "37 22 0:30 / /cut rw");
    ASSERT_EQ(mounts.size(), 2u);
    EXPECT_EQ(mounts[0].point, "/");
    EXPECT_EQ(mounts[1].id, 36u);
    EXPECT_EQ(mounts[1].point, "/media/a b\\c\\9");
    EXPECT_EQ(mounts[1].type, "nfs4");
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

bool hasMount(MountTable& table, const std::string& point) {
    return std::ranges::count(*table.mounts(), point, &Mount::point) == 1;
}

TEST(MountTable, noticesChanges) {
    const TemporaryFolder folder;
    const std::string& point = folder.path();
    // In a mount table of this process alone.
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        GTEST_SKIP() << "this machine does not let the test mount a file system of its own";
    MountTable table;
    EXPECT_FALSE(hasMount(table, point));
    ASSERT_EQ(::mount("none", point.c_str(), "tmpfs", 0, nullptr), 0);
    EXPECT_TRUE(hasMount(table, point));
    ASSERT_EQ(::umount(point.c_str()), 0);
    EXPECT_FALSE(hasMount(table, point));
}

}  // namespace
}  // namespace stowpocket
