// SPDX-License-Identifier: MIT
#include "platform/linux/files/Mounts.h"

#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"

#include <QAbstractEventDispatcher>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

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

TEST(MountInfoVolumesTest, seesARealVolumeComeAndGo) {
    // In a mount table of this process alone.
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        GTEST_SKIP() << "mounting is not permitted here: " << std::strerror(errno);
    const TemporaryFolder folder;
    const std::string& path = folder.path();
    MountTable table;
    const auto isListed = [&] { return std::ranges::count(*table.mounts(), path, &Mount::point) == 1; };
    EXPECT_FALSE(isListed());
    MountInfoVolumes volumes;
    int mounted = 0;
    int unmounted = 0;
    const Subscription mount = volumes.didMount().connect([&mounted] { ++mounted; });
    const Subscription unmount = volumes.didUnmount().connect([&unmounted] { ++unmounted; });
    ASSERT_EQ(::mount("none", path.c_str(), "tmpfs", 0, nullptr), 0);
    EXPECT_TRUE(comesTrue([&] { return mounted > 0; }));
    EXPECT_TRUE(isListed());
    ASSERT_EQ(::mount("none", path.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    ASSERT_EQ(::umount(path.c_str()), 0) << "nothing is kept open there";
    EXPECT_TRUE(comesTrue([&] { return unmounted > 0; }));
    EXPECT_FALSE(isListed());
    EXPECT_EQ(mounted, 1);
    EXPECT_EQ(unmounted, 1);
    EXPECT_FALSE(QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) << "nothing at rest";
}

}  // namespace
}  // namespace stowpocket
