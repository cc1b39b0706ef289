// SPDX-License-Identifier: MIT
#include "app/Settings.h"

#include "fakes/FakeInput.h"
#include "services/Preferences.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Status = LoginItem::Status;

class LaunchAtLoginTest : public testing::Test {
protected:
    LaunchAtLoginTest() { registerPreferenceDefaults(preferences); }
    [[nodiscard]] bool wish() const { return preferences.boolean(preferenceKey::launchAtLogin); }
    void storeWish(bool wanted) { preferences.setValue(preferenceKey::launchAtLogin, wanted); }

    FakeLoginItem loginItem;
    LayeredPreferenceStore preferences;
    LaunchAtLogin launchAtLogin{loginItem, preferences};
};

TEST_F(LaunchAtLoginTest, theLaunchGrantsTheWish) {
    launchAtLogin.sync();
    EXPECT_EQ(loginItem.current, Status::enabled);
    launchAtLogin.sync();
    EXPECT_EQ(loginItem.changes, 1);
    storeWish(false);
    launchAtLogin.sync();
    EXPECT_EQ(loginItem.current, Status::notRegistered);
    loginItem.current = Status::requiresApproval;
    storeWish(true);
    launchAtLogin.sync();
    EXPECT_EQ(loginItem.current, Status::enabled) << "registered again";
}

TEST_F(LaunchAtLoginTest, aWishThatCannotBeGrantedIsTakenBack) {
    loginItem.fails = true;
    launchAtLogin.sync();
    EXPECT_FALSE(wish());

    loginItem.current = Status::enabled;
    launchAtLogin.sync();
    EXPECT_TRUE(wish()) << "it cannot be turned off";
    storeWish(false);
    launchAtLogin.settingChanged(false);
    EXPECT_TRUE(wish());

    loginItem.current = Status::requiresApproval;
    storeWish(true);
    launchAtLogin.settingChanged(true);
    EXPECT_FALSE(wish());
    loginItem.current = Status::enabled;
    launchAtLogin.adoptActualState();
    EXPECT_TRUE(wish());
}

}  // namespace
}  // namespace stowpocket
