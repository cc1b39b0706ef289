// SPDX-License-Identifier: MIT
#include "fakes/FakeInput.h"
#include "platform/linux/session/XdgLoginItem.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct Faked {
    FakeLoginItem item;
};

struct OnDisk {
    TemporaryFolder folder;
    XdgLoginItem item{folder.path("config"), "/usr/bin/stowpocket"};
};

template <class Subject>
class LoginItemContract : public testing::Test {
protected:
    Subject subject;
};

using Subjects = testing::Types<Faked, OnDisk>;
TYPED_TEST_SUITE(LoginItemContract, Subjects);

TYPED_TEST(LoginItemContract, isWhatItWasMadeLastHoweverOften) {
    LoginItem& item = this->subject.item;
    EXPECT_EQ(item.status(), LoginItem::Status::notRegistered);
    for (const bool isOn : {false, true, true, false, true}) {
        EXPECT_TRUE(isOn ? item.registerItem() : item.unregisterItem());
        EXPECT_EQ(item.status(), isOn ? LoginItem::Status::enabled : LoginItem::Status::notRegistered);
    }
}

}  // namespace
}  // namespace stowpocket
