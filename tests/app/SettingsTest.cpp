// SPDX-License-Identifier: MIT
#include "app/Settings.h"
#include "app/HotkeyManager.h"
#include "fakes/FakeInput.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct HotkeyManagerTest : testing::Test {
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
    service.refuses = true;
    manager.registerQuickDropHotkey();
    EXPECT_TRUE(manager.isTaken(quickDropHotkey) && !manager.isTaken(shelfHotkey)) << "one is refused, one cleared";
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

/// What the user wishes and what is registered, before and after.
struct LoginCase {
    bool wish;
    Status before;
    bool fails;
    Status after;
    bool wishAfter;
};

void expect(const std::vector<LoginCase>& cases, const std::function<void(LaunchAtLogin&, const LoginCase&)>& work) {
    for (const LoginCase& each : cases) {
        LayeredPreferenceStore preferences;
        preferences.setValue(preferenceKey::launchAtLogin, each.wish);
        FakeLoginItem item;
        item.current = each.before;
        item.fails = each.fails;
        LaunchAtLogin launchAtLogin(item, preferences);
        work(launchAtLogin, each);
        EXPECT_EQ(item.current, each.after);
        EXPECT_EQ(preferences.boolean(preferenceKey::launchAtLogin), each.wishAfter) << "or it is taken back";
    }
}

TEST(LaunchAtLoginTest, theWishIsGrantedOrTakenBack) {
    const std::vector<LoginCase> common{{false, Status::enabled, false, Status::notRegistered, false},
                                        {true, Status::requiresApproval, false, Status::enabled, true},
                                        {true, Status::notRegistered, true, Status::notRegistered, false},
                                        {false, Status::enabled, true, Status::enabled, true},
                                        {true, Status::requiresApproval, true, Status::requiresApproval, false}};
    expect(common, [](auto& launchAtLogin, auto&) { launchAtLogin.sync(); });
    expect(common, [](auto& launchAtLogin, auto& each) { launchAtLogin.settingChanged(each.wish); });
    expect({{true, Status::enabled, true, Status::enabled, true}}, [](auto& launchAtLogin, auto&) {
        launchAtLogin.sync();  // there is nothing to do that could fail
    });
    expect({{false, Status::enabled, false, Status::enabled, true}},
           [](auto& launchAtLogin, auto&) { launchAtLogin.adoptActualState(); });
}

}  // namespace
}  // namespace stowpocket
