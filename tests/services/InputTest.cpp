// SPDX-License-Identifier: MIT
#include "fakes/FakeInput.h"
#include "platform/linux/hotkeys/X11HotkeyService.h"
#include "platform/linux/input/X11EventMonitors.h"
#include "support/DisplayHand.h"

#include <QGuiApplication>
#include <QWidget>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

constexpr std::uint32_t optionShift = carbonModifier::optionKey | carbonModifier::shiftKey;
constexpr std::uint16_t virtualS = 1;
constexpr std::uint16_t virtualD = 2;

xcb_connection_t* connectionOfQt() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

struct FakedInput {
    FakeEventMonitors monitors;
    FakeHotkeyService hotkeys;

    void prepareOwnWindow() {}
    void type(std::uint16_t key) { monitors.press(key, 0); }
    void clickElsewhere() { monitors.clickElsewhere(); }
    void holdLeftButton() { monitors.pressed = 1; }
    void pressHotkey(std::uint16_t key) { hotkeys.press(key, optionShift); }
    void holdForOtherProgram() { hotkeys.refuses = true; }
};

/// Qt's connection to the display, and a user at it.
struct DisplayInput {
    ~DisplayInput() { hand.buttonUp(1); }

    void prepareOwnWindow() {
        window.setGeometry(100, 100, 300, 200);
        window.show();
        EXPECT_TRUE(hand.bringToFront(static_cast<xcb_window_t>(window.winId())));
        EXPECT_TRUE(comesTrue([this] { return window.isActiveWindow(); }));
    }
    void type(std::uint16_t key) { hand.press({keyOf(key)}); }
    void clickElsewhere() {
        hand.moveTo(900, 600);
        EXPECT_TRUE(hand.putUnder(foreign, {900, 600}));
        hand.buttonDown(3);
        hand.buttonUp(3);
    }
    void holdLeftButton() { hand.buttonDown(1); }
    void pressHotkey(std::uint16_t key) {
        hand.passMoment();
        hand.press({key::alt, key::shift, keyOf(key)});
    }
    void holdForOtherProgram() {
        xcb_grab_key(hand.session().raw(), 0, hand.session().root(), XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT, key::s,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        hand.sync();
    }

    DisplayHand hand;
    const xcb_window_t foreign = hand.openForeignWindow();
    X11EventMonitors monitors{connectionOfQt()};
    X11HotkeyService hotkeys{connectionOfQt()};
    QWidget window;

private:
    static std::uint8_t keyOf(std::uint16_t key) { return key == virtualS ? key::s : key::d; }
};

template <class Subject>
class InputContract : public testing::Test {
protected:
    Subject subject;
    EventMonitors& monitors = subject.monitors;
    HotkeyService& hotkeys = subject.hotkeys;
};
using Subjects = testing::Types<FakedInput, DisplayInput>;
TYPED_TEST_SUITE(InputContract, Subjects);

TYPED_TEST(InputContract, theMonitorAddedLastSwallowsFirstAndMayRemoveItself) {
    this->subject.prepareOwnWindow();
    std::string seen;
    const auto first = this->monitors.addLocalKeyDownMonitor([&](const KeyEvent& event) {
        seen += std::to_string(event.keyCode);
        return false;
    });
    std::unique_ptr<EventMonitorToken> last;
    last = this->monitors.addLocalKeyDownMonitor([&](const KeyEvent& event) {
        seen += "last ";
        if (event.keyCode == virtualD)
            last.reset();
        return true;
    });
    for (const std::uint16_t key : {virtualS, virtualD, virtualS})
        this->subject.type(key);
    EXPECT_TRUE(comesTrue([&] { return seen == "last last 1"; })) << seen;
}

TYPED_TEST(InputContract, clicksElsewhereReachEveryMonitorUntilItGoes) {
    int one = 0;
    int other = 0;
    const auto first = this->monitors.addGlobalMouseDownMonitor([&] { ++one; });
    auto second = this->monitors.addGlobalMouseDownMonitor([&] { ++other; });
    this->subject.clickElsewhere();
    EXPECT_TRUE(comesTrue([&] { return one == 1 && other == 1; }));
    second.reset();
    this->subject.clickElsewhere();
    EXPECT_TRUE(comesTrue([&] { return one == 2; }));
    EXPECT_EQ(other, 1);
    // The window manager may hold the pointer's events for a moment.
    EXPECT_TRUE(comesTrue([&] { return this->monitors.pressedMouseButtons() == 0; }));
    this->subject.holdLeftButton();
    EXPECT_TRUE(comesTrue([&] { return this->monitors.pressedMouseButtons() == 1; }));
}

TYPED_TEST(InputContract, aHotkeyFiresWhileItIsRegistered) {
    std::vector<std::uint32_t> fired;
    this->hotkeys.installEventHandler([&](const HotkeyIdentifier* hotkey) {
        fired.push_back(hotkey->id);
        return 0;
    });
    auto shelf = this->hotkeys.registerHotkey(virtualS, optionShift, {0, 1});
    const auto drop = this->hotkeys.registerHotkey(virtualD, optionShift, {0, 2});
    ASSERT_TRUE(shelf && drop);
    const auto fires = [&](std::uint16_t key, std::uint32_t id) {
        fired.clear();
        this->subject.pressHotkey(key);
        return comesTrue([&] { return fired == std::vector{id}; });
    };
    EXPECT_TRUE(fires(virtualS, 1));
    shelf.reset();
    this->subject.pressHotkey(virtualS);
    EXPECT_TRUE(fires(virtualD, 2));
    this->subject.holdForOtherProgram();
    EXPECT_FALSE(this->hotkeys.registerHotkey(virtualS, optionShift, {0, 3}));
    EXPECT_EQ(this->hotkeys.source(), HotkeySource::windowSystem);
}

}  // namespace
}  // namespace stowpocket
