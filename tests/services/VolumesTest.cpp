// SPDX-License-Identifier: MIT
#include "fakes/FakeInput.h"
#include "platform/linux/files/Mounts.h"
#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"

#include <QAbstractEventDispatcher>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

namespace stowpocket {
namespace {

struct Faked {
    FakeVolumes volumes;
    static bool isPermitted() { return true; }
    void mount() const { volumes.mounted.emit(); }
    void unmount() const { volumes.unmounted.emit(); }
};

/// A volume in a mount table of this process alone.
struct OnLinux {
    const bool mayMount =
        ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    TemporaryFolder folder;
    MountInfoVolumes volumes;

    [[nodiscard]] bool isPermitted() const { return mayMount; }
    [[nodiscard]] bool isListed() const {
        return std::ranges::count(*MountTable().mounts(), folder.path(), &Mount::point) == 1;
    }
    void mount() const {
        ASSERT_EQ(::mount("none", folder.path().c_str(), "tmpfs", 0, nullptr), 0);
        EXPECT_TRUE(isListed());
    }
    void unmount() const {
        ASSERT_EQ(::mount("none", folder.path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
        ASSERT_EQ(::umount(folder.path().c_str()), 0) << "nothing is kept open there";
        EXPECT_FALSE(isListed());
    }
};

template <class Subject>
class VolumesContract : public testing::Test {
protected:
    Subject subject;
};
using Subjects = testing::Types<Faked, OnLinux>;
TYPED_TEST_SUITE(VolumesContract, Subjects);

TYPED_TEST(VolumesContract, tellOnceOfEachVolumeThatComesOrGoes) {
    if (!this->subject.isPermitted())
        GTEST_SKIP() << "mounting is not permitted here";
    int mounted = 0;
    int unmounted = 0;
    const Subscription mount = this->subject.volumes.didMount().connect([&mounted] { ++mounted; });
    const Subscription unmount = this->subject.volumes.didUnmount().connect([&unmounted] { ++unmounted; });
    this->subject.mount();
    EXPECT_TRUE(comesTrue([&] { return mounted == 1; }));
    EXPECT_EQ(unmounted, 0);
    this->subject.unmount();
    EXPECT_TRUE(comesTrue([&] { return unmounted == 1; }));
    EXPECT_TRUE(comesTrue([] { return !QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents); }))
        << "nothing wakes it up at rest";
    EXPECT_EQ(mounted, 1) << "other options are no other volume";
}

}  // namespace
}  // namespace stowpocket
