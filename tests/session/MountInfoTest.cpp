// SPDX-License-Identifier: MIT
#include "platform/linux/session/MountInfo.h"

#include "contracts/TemporaryFolder.h"
#include "platform/linux/session/MountInfoVolumes.h"
#include "x11/ComesTrue.h"

#include <QAbstractEventDispatcher>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstring>
#include <limits>

namespace stowpocket {
namespace {

using Mounts = std::vector<MountPoint>;

TEST(MountInfoTest, readsTheLinesOfTheKernel) {
    const std::pair<std::string, Mounts> table[] = {
        {"36 35 98:0 / /mnt rw,noatime master:1 - ext3 /dev/root rw\n", {{36, "/mnt"}}},
        {"9 1 0:1 / /b rw - t s o\n8 1 0:1 / /a rw - t s o", {{8, "/a"}, {9, "/b"}}},
        {R"(1 1 0:1 / /a\040b\011\012\134\0401 rw - t s o)", {{1, "/a b\t\n\\ 1"}}},
        {R"(1 1 0:1 / /a\04 rw)", {{1, "/a\\04"}}},
        {R"(1 1 0:1 / /a\999\777\-01\ rw)", {{1, R"(/a\999\777\-01\)"}}},
        {"1 1 0:1 / /n\xFF rw - t s o", {{1, "/n\xFF"}}},
        {"18446744073709551615 1 0:1 / / rw", {{std::numeric_limits<std::uint64_t>::max(), "/"}}},
        {"18446744073709551616 1 0:1 / / rw", {}},
        {"x1 1 0:1 / /a rw\n1x 1 0:1 / /a rw\n-1 1 0:1 / /a rw\n 1 1 0:1 / /a rw", {}},
        {"1 1 0:1 / relative rw\n1 1 0:1 /\n1\n\n\n   ", {}},
        {"", {}},
    };
    for (const auto& [text, mounts] : table)
        EXPECT_EQ(mountPoints(text), mounts) << text;
}

TEST(MountInfoTest, tellsChangesOfPlaceFromChangesOfOptions) {
    const auto changes = [](const Mounts& before, const Mounts& after) {
        const MountChanges found = changesBetween(before, after);
        return std::pair(found.mounted, found.unmounted);
    };
    const Mounts one{{1, "/"}};
    const Mounts two{{1, "/"}, {2, "/a"}};
    EXPECT_EQ(changes(two, two), std::pair(false, false));
    EXPECT_EQ(changes(one, two), std::pair(true, false));
    EXPECT_EQ(changes(two, one), std::pair(false, true));
    EXPECT_EQ(changes(two, {{1, "/"}, {2, "/b"}}), std::pair(true, true)) << "moved";
    EXPECT_EQ(changes(two, {{1, "/"}, {3, "/a"}}), std::pair(true, true)) << "another one in its place";
    EXPECT_EQ(changes({{1, "/a"}}, {{1, "/a"}, {2, "/a"}}), std::pair(true, false)) << "one over the other";
}

TEST(MountInfoVolumesTest, seesARealVolumeComeAndGo) {
    // In a mount table of this process alone.
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        GTEST_SKIP() << "mounting is not permitted here: " << std::strerror(errno);
    const TemporaryFolder folder;
    const std::string& path = folder.path();
    MountInfoVolumes volumes;
    int mounted = 0;
    int unmounted = 0;
    const Subscription mount = volumes.didMount().connect([&mounted] { ++mounted; });
    const Subscription unmount = volumes.didUnmount().connect([&unmounted] { ++unmounted; });
    ASSERT_EQ(::mount("none", path.c_str(), "tmpfs", 0, nullptr), 0);
    EXPECT_TRUE(comesTrue([&] { return mounted > 0; }));
    ASSERT_EQ(::mount("none", path.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    ASSERT_EQ(::umount(path.c_str()), 0) << "nothing is kept open there";
    EXPECT_TRUE(comesTrue([&] { return unmounted > 0; }));
    EXPECT_EQ(mounted, 1);
    EXPECT_EQ(unmounted, 1);
    EXPECT_FALSE(QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) << "nothing at rest";
}

}  // namespace
}  // namespace stowpocket
