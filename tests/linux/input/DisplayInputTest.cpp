// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/X11HotkeyService.h"
#include "platform/linux/input/X11EventMonitors.h"
#include "support/DisplayHand.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <QWidget>

#include <gtest/gtest.h>

#include <map>

namespace stowpocket {
namespace {

class CountingWidget : public QWidget {
public:
    int keys = 0;
    int clicks = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }
    void mousePressEvent(QMouseEvent*) override { ++clicks; }
};

class EventMonitorsTest : public testing::Test {
protected:
    EventMonitorsTest() {
        widget.setGeometry(100, 100, 300, 200);
        widget.show();
        EXPECT_TRUE(hand.bringToFront(static_cast<xcb_window_t>(widget.winId())));
        EXPECT_TRUE(comesTrue([this] { return widget.isActiveWindow(); }));
    }

    /// The event that the monitors see when these keys are pressed.
    [[nodiscard]] KeyEvent seenOn(const std::vector<std::uint8_t>& keys) {
        std::optional<KeyEvent> seen;
        const auto monitor = monitors.addLocalKeyDownMonitor([&seen](const KeyEvent& event) {
            seen = seen.value_or(event);
            return true;
        });
        hand.press(keys);
        EXPECT_TRUE(comesTrue([&seen] { return seen.has_value(); }));
        return seen.value_or(KeyEvent{});
    }
    void lock(std::uint8_t key) {
        const int before = widget.keys;
        hand.press({key});
        EXPECT_TRUE(comesTrue([&] { return widget.keys == before + 1; }));
    }
    void click(std::uint8_t button) {
        hand.buttonDown(button);
        hand.buttonUp(button);
    }

    DisplayHand hand;
    const std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    bool isWaylandDragOn = false;
    X11EventMonitors monitors{*connection, {.isWaylandDragOn = [this] { return isWaylandDragOn; }}};
    CountingWidget widget;
    int outside = 0;
};

TEST_F(EventMonitorsTest, describesKeysAsTheReferencePlatformDoes) {
    const auto expect = [this](const std::vector<std::uint8_t>& keys, std::uint16_t keyCode, std::int64_t flags,
                               const std::string& characters) {
        const KeyEvent event = seenOn(keys);
        EXPECT_EQ(std::tie(event.keyCode, event.modifierFlags, event.capitals), std::tie(keyCode, flags, characters));
    };
    constexpr std::int64_t optionShift = modifierFlag::option | modifierFlag::shift;
    expect({key::control, key::shift, key::one}, 18, modifierFlag::control | modifierFlag::shift, "1");
    expect({key::super, key::s}, 1, modifierFlag::command, "S");
    expect({key::up}, 126, 0xA00000, "↑");
    lock(key::numLock);
    expect({key::pad5}, 87, 0x200000, "5");
    expect({key::s}, 1, 0, "S");  // Num Lock is no modifier
    lock(key::numLock);
    lock(key::capsLock);
    expect({key::alt, key::shift, key::s}, 1, optionShift | 0x10000, "S");
    hand.press({key::capsLock});

    EXPECT_TRUE(run("setxkbmap us,de,ru -option grp:caps_toggle"));
    hand.press({key::capsLock});
    expect({key::grave}, 50, 0, "^");   // a dead key
    expect({key::minus}, 27, 0, "SS");  // the sharp s
    hand.press({key::capsLock});
    expect({key::control, key::s}, 1, modifierFlag::control, "Ы");  // in the third layout
    hand.press({key::capsLock});
    EXPECT_TRUE(run("setxkbmap us -option \"\""));
}

TEST_F(EventMonitorsTest, swallowBeforeShortcutsAndWidgetsTheLastOneFirstAndOncePerPress) {
    QShortcut shortcut(QKeySequence(Qt::Key_F5), &widget);
    QObject::connect(&shortcut, &QShortcut::activated, [] { FAIL() << "it was swallowed"; });
    std::string seen;
    const auto first =
        monitors.addLocalKeyDownMonitor([&](const KeyEvent& event) { return seen += "first ", event.keyCode != 2; });
    std::unique_ptr<EventMonitorToken> last;
    last = monitors.addLocalKeyDownMonitor([&](const KeyEvent&) {
        seen += "last ";
        last.reset();
        return true;
    });
    for (const std::uint8_t pressed : {key::s, key::f5, key::d})
        hand.press({pressed});
    EXPECT_TRUE(comesTrue([&] { return widget.keys == 1; })) << "only D passes";
    EXPECT_EQ(seen, "last first first ");
}

TEST_F(EventMonitorsTest, takesALostKeyboardForAClickInAWaylandSession) {
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    auto monitor = monitors.addGlobalMouseDownMonitor([this] { ++outside; });
    qunsetenv("WAYLAND_DISPLAY");
    isWaylandDragOn = true;
    ASSERT_NE(hand.openForeignWindow(), 0u);
    EXPECT_TRUE(comesTrue([] { return QGuiApplication::applicationState() == Qt::ApplicationInactive; }));
    EXPECT_EQ(outside, 0) << "not before the drag has ended";
    EXPECT_EQ(monitors.pressedMouseButtons(), 1U);
    isWaylandDragOn = false;
    monitors.waylandDragEnded();
    EXPECT_EQ(outside, 1);
    EXPECT_EQ(monitors.pressedMouseButtons(), 0U);
    EXPECT_TRUE(hand.bringToFront(static_cast<xcb_window_t>(widget.winId())));
    EXPECT_TRUE(comesTrue([] { return QGuiApplication::applicationState() == Qt::ApplicationActive; }));
    ASSERT_NE(hand.openForeignWindow(), 0u);
    EXPECT_TRUE(comesTrue([this] { return outside == 2; }));
    const auto addWithDrag = [&](bool isOn) {
        monitor.reset();
        isWaylandDragOn = isOn;
        monitor = monitors.addGlobalMouseDownMonitor([this] { ++outside; });
        isWaylandDragOn = false;
        monitors.waylandDragEnded();
    };
    addWithDrag(false);
    EXPECT_EQ(outside, 2) << "the end of a drag has nothing to do with a shelf opened after it";
    addWithDrag(true);
    EXPECT_EQ(outside, 3) << "a shelf that a drag opened on its way does not stay";
}

TEST_F(EventMonitorsTest, seesLeftAndRightClicksElsewhereOnly) {
    const xcb_window_t foreign = hand.openForeignWindow();
    const auto monitor = monitors.addGlobalMouseDownMonitor([this] { ++outside; });
    hand.moveTo(900, 600);
    ASSERT_TRUE(hand.putUnder(foreign, {900, 600}));
    for (const std::uint8_t button : std::vector<std::uint8_t>{4, 2, 2, 1, 3})
        click(button);
    EXPECT_TRUE(comesTrue([this] { return outside == 2; }));
    const QPoint inside = widget.geometry().center();
    hand.moveTo(inside.x(), inside.y());
    click(1);
    EXPECT_TRUE(comesTrue([this] { return widget.clicks == 1; }));
    EXPECT_EQ(outside, 2);
    ASSERT_TRUE(hand.putUnder(foreign, {inside.x(), inside.y()}));
    hand.buttonDown(1);
    EXPECT_TRUE(comesTrue([this] { return monitors.pressedMouseButtons() == 1; }));
    hand.buttonUp(1);
    EXPECT_TRUE(comesTrue([this] { return outside == 3; })) << "another program's window lies over the own one";
}

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
    const auto shelf = service.registerHotkey(virtualS, optionShift, {0, 1});
    auto drop = service.registerHotkey(virtualS, optionShift, {0, 3});
    pressS();
    EXPECT_TRUE(comesTrue([&] { return presses[3] == 1; })) << "the later one";
    drop.reset();
    drop = service.registerHotkey(virtualD, optionShift, {0, 2});
    pressS();
    hand.press({key::control, key::alt, key::shift, key::s});  // other modifiers are other combinations
    hand.press({key::alt, key::s});
    ASSERT_TRUE(pressDAndWait());
    EXPECT_EQ(presses[1], 1) << "the other one moved away";
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
    EXPECT_TRUE(run("setxkbmap us"));
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
