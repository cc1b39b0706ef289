// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/X11HotkeyService.h"
#include "support/DisplayHand.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <map>

namespace stowpocket {
namespace {

constexpr std::uint32_t optionShift = carbonModifier::optionKey | carbonModifier::shiftKey;
constexpr std::uint32_t virtualS = 1;
constexpr std::uint32_t virtualD = 2;

xcb_connection_t* connectionOfQt() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

class HotkeyTest : public testing::Test {
protected:
    HotkeyTest() {
        service.installEventHandler([this](const HotkeyIdentifier* pressed) {
            ++presses[pressed->id];
            return 0;
        });
        EXPECT_NE(hand.openForeignWindow(), 0u);
    }
    ~HotkeyTest() override {
        hand.up(key::s);
        EXPECT_TRUE(run("setxkbmap us"));
    }

    void pressS() {
        hand.passMoment();
        hand.press({key::alt, key::shift, key::s});
    }
    /// Presses a hotkey that is surely registered: all earlier presses have been delivered when it is.
    [[nodiscard]] bool pressDAndWait() {
        const int before = presses[2];
        hand.passMoment();
        hand.press({key::alt, key::shift, key::d});
        return comesTrue([&] { return presses[2] == before + 1; });
    }

    DisplayHand hand;
    X11HotkeyService service{connectionOfQt()};
    std::map<std::uint32_t, int> presses;
};

TEST_F(HotkeyTest, equalOnesShareTheirKeysUntilOneMovesAway) {
    auto shelf = service.registerHotkey(virtualS, optionShift, {0, 1});
    auto drop = service.registerHotkey(virtualS, optionShift, {0, 3});
    pressS();
    EXPECT_TRUE(comesTrue([&] { return presses[3] == 1; })) << "the later one";
    drop.reset();
    drop = service.registerHotkey(virtualD, optionShift, {0, 2});
    pressS();
    ASSERT_TRUE(pressDAndWait());
    EXPECT_EQ(presses[1], 1) << "the other one moved away";
    // The two change places: the first takes keys that the second still has.
    hand.press({key::control, key::alt, key::shift, key::s});  // other modifiers are other combinations
    hand.press({key::alt, key::s});
    shelf.reset();
    shelf = service.registerHotkey(virtualD, optionShift, {0, 2});
    drop.reset();
    drop = service.registerHotkey(virtualS, optionShift, {0, 1});
    pressS();
    ASSERT_TRUE(pressDAndWait());
    EXPECT_EQ(presses[1], 2);
}

TEST_F(HotkeyTest, isNotHalfRegisteredWhereAnotherProgramHoldsACombination) {
    xcb_connection_t* const other = hand.session().raw();
    const auto grab = [&](std::uint16_t modifiers) {
        return XcbAnswer<xcb_generic_error_t>(
            xcb_request_check(other, xcb_grab_key_checked(other, 0, hand.session().root(), modifiers, key::s,
                                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    };
    const std::uint16_t withoutLocks = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;
    EXPECT_FALSE(grab(withoutLocks | XCB_MOD_MASK_LOCK));
    EXPECT_FALSE(service.registerHotkey(virtualS, optionShift, {0, 1}));
    EXPECT_FALSE(grab(withoutLocks));
    xcb_ungrab_key(other, key::s, hand.session().root(), XCB_MOD_MASK_ANY);
    hand.sync();
    EXPECT_TRUE(service.registerHotkey(virtualS, optionShift, {0, 1}));
    EXPECT_FALSE(service.registerHotkey(52, optionShift, {0, 1})) << "no such key";
}

TEST_F(HotkeyTest, staysOnItsKeyWhenTheKeyboardMapChanges) {
    const auto shelf = service.registerHotkey(virtualS, optionShift, {0, 1});
    const auto drop = service.registerHotkey(virtualD, optionShift, {0, 2});
    const auto firesAgain = [this] {
        const int before = presses[1];
        const bool fired = comesTrue([&] {
            pressS();
            return presses[1] > before;
        });
        return fired && pressDAndWait();  // no press is left for the next look
    };
    EXPECT_TRUE(run("setxkbmap us -variant dvorak"));
    EXPECT_TRUE(firesAgain());
    EXPECT_TRUE(run("setxkbmap -layout us,ru -option grp:caps_toggle"));
    hand.press({key::capsLock});
    EXPECT_TRUE(firesAgain()) << "in the second group";
    EXPECT_TRUE(run("setxkbmap us -option \"\""));
    EXPECT_TRUE(firesAgain());

    // Num Lock becomes another modifier.
    EXPECT_TRUE(run("xmodmap -e \"remove mod2 = Num_Lock\" -e \"add mod3 = Num_Lock\""));
    hand.press({key::numLock});
    EXPECT_EQ(hand.lockState(), XCB_MOD_MASK_3);
    EXPECT_TRUE(firesAgain());
    hand.press({key::numLock});
}

}  // namespace
}  // namespace stowpocket
