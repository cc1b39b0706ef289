// SPDX-License-Identifier: MIT
#include "app/Settings.h"
#include "app/HotkeyManager.h"
#include "fakes/FakeInput.h"
#include "foundation/Signal.h"
#include "services/Preferences.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

class HotkeyManagerTest : public testing::Test {
protected:
    HotkeyManagerTest() { registerPreferenceDefaults(preferences); }

    using Registered = FakeHotkeyService::Registered;

    FakeHotkeyService service;
    LayeredPreferenceStore preferences;
    NotificationCenter notifications;
    std::string posted;
    Subscription toggles = notifications.observe(togglePopoverNotification, [this] { posted += "toggle "; });
    Subscription drops = notifications.observe(quickDropNotification, [this] { posted += "drop "; });
    HotkeyManager manager{service, preferences, notifications};
};

TEST_F(HotkeyManagerTest, registersTheStoredShortcutsOnceEach) {
    manager.registerShelfHotkey();
    manager.registerQuickDropHotkey();
    preferences.setValue(preferenceKey::shelfHotkeyModifiers, 0x1E0000 | 0x810000);  // no Caps Lock, no function key
    manager.registerShelfHotkey();
    EXPECT_EQ(service.mostAtOnce, 2u) << "the old one goes before the new one comes";
    EXPECT_EQ(service.registered, (std::list<Registered>{{2, 0xA00, {0x53504B32, 2}}, {1, 0x1B00, {0x53504B31, 1}}}));
    preferences.setValue(preferenceKey::shelfHotkeyKeyCode, -1);
    manager.registerShelfHotkey();
    EXPECT_EQ(service.registered.size(), 1u);
    EXPECT_FALSE(manager.isTaken(shelfHotkey) || manager.isTaken(quickDropHotkey));
    service.refuses = true;
    manager.registerQuickDropHotkey();
    EXPECT_TRUE(manager.isTaken(quickDropHotkey) && !manager.isTaken(shelfHotkey)) << "one is refused, one cleared";
    EXPECT_TRUE(service.registered.empty()) << "the old one is gone even when the new one is refused";
}

TEST_F(HotkeyManagerTest, turnsPressesIntoNotificationsByTheirNumberAlone) {
    const HotkeyIdentifier shelf{0, 1};
    const HotkeyIdentifier quickDrop{0x53504B31, 2};
    const HotkeyIdentifier other{0x53504B31, 3};
    EXPECT_EQ(service.handler(nullptr), -9874);
    for (const HotkeyIdentifier& pressed : {shelf, quickDrop, other})
        EXPECT_EQ(service.handler(&pressed), 0);
    EXPECT_EQ(posted, "toggle drop ");
}

TEST_F(HotkeyManagerTest, impossibleStoredShortcutsAreBrokenInvariants) {
    preferences.setValue(preferenceKey::shelfHotkeyKeyCode, std::int64_t{1} << 32);
    EXPECT_DEATH(manager.registerShelfHotkey(), "32 bits");
    preferences.setValue(preferenceKey::quickDropModifiers, -1);
    EXPECT_DEATH(manager.registerQuickDropHotkey(), "modifier flags");
}

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
