// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/Keys.h"
#include "platform/linux/x11/XcbSession.h"
#include "support/ComesTrue.h"

#include <QProcess>

#include <array>
#include <chrono>
#include <xcb/xtest.h>

namespace stowpocket {

/// Kernel key codes plus 8, of the keys that the tests press.
namespace key {
inline constexpr std::uint8_t a = 38, s = 39, d = 40, up = 111, f5 = 71, pad5 = 84, escape = 9, enter = 36, one = 10,
                              grave = 49, minus = 20, shift = 50, control = 37, alt = 64, capsLock = 66, numLock = 77,
                              super = 133;
}

inline bool run(const char* command) {
    QStringList words = QProcess::splitCommand(QString::fromUtf8(command));
    const QString program = words.takeFirst();
    return QProcess::execute(program, words) == 0;
}

/// A user: keys, clicks and looks at the display, as another program sees them.
class DisplayHand {
public:
    [[nodiscard]] XcbSession& session() { return *session_; }
    void down(std::uint8_t key) { fake(XCB_KEY_PRESS, key); }
    void up(std::uint8_t key) { fake(XCB_KEY_RELEASE, key); }
    /// All down in their order, then up again in reverse.
    void press(const std::vector<std::uint8_t>& keys) {
        for (const std::uint8_t key : keys)
            down(key);
        for (auto key = keys.rbegin(); key != keys.rend(); ++key)
            up(*key);
    }
    /// A release and a press within one millisecond of the server look like the repeat of a key that is held.
    void passMoment() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(2);
        while (std::chrono::steady_clock::now() < end)
            sync();
    }
    void moveTo(int x, int y) { fake(XCB_MOTION_NOTIFY, 0, x, y); }
    void buttonDown(std::uint8_t button) { fake(XCB_BUTTON_PRESS, button); }
    void buttonUp(std::uint8_t button) { fake(XCB_BUTTON_RELEASE, button); }

    /// Returns once the server has done all that it was asked.
    void sync() { static_cast<void>(lockState()); }
    [[nodiscard]] std::uint16_t lockState() { return pointerIn(session_->root())->mask & x11Modifier::all; }
    /// Raises a window and moves it so that it lies under the pointer, which is at this place.
    [[nodiscard]] bool putUnder(xcb_window_t window, std::pair<int, int> pointer) {
        const std::array<std::uint32_t, 3> placeAndOrder{static_cast<std::uint32_t>(pointer.first - 50),
                                                         static_cast<std::uint32_t>(pointer.second - 50),
                                                         XCB_STACK_MODE_ABOVE};
        xcb_configure_window(session_->raw(), window,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_STACK_MODE,
                             placeAndOrder.data());
        return comesTrue([&] {
            xcb_window_t under = session_->root();
            while (under != XCB_WINDOW_NONE && under != window)
                under = pointerIn(under)->child;
            return under == window;
        });
    }
    /// Has the window manager give a window the focus, as its user would; false when it never does.
    [[nodiscard]] bool bringToFront(xcb_window_t window) {
        constexpr std::uint32_t askedByUser = 2;
        return comesTrue([&] {
            const auto found = session_->property(session_->root(), X11Atom::activeWindow);
            session_->sendMessage(session_->root(),
                                  XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, window,
                                  X11Atom::activeWindow, {askedByUser});
            return !found.empty() && found.front() == window;
        });
    }
    /// A window of another program than the one tested, managed and with the focus.
    [[nodiscard]] xcb_window_t openForeignWindow() {
        const xcb_window_t window = xcb_generate_id(session_->raw());
        xcb_create_window(session_->raw(), XCB_COPY_FROM_PARENT, window, session_->root(), 0, 0, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(session_->raw(), window);
        return bringToFront(window) ? window : 0;
    }

private:
    void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0) {
        xcb_test_fake_input(session_->raw(), type, detail, XCB_CURRENT_TIME, session_->root(),
                            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
        sync();
    }
    XcbAnswer<xcb_query_pointer_reply_t> pointerIn(xcb_window_t window) {
        return XcbAnswer<xcb_query_pointer_reply_t>(
            xcb_query_pointer_reply(session_->raw(), xcb_query_pointer(session_->raw(), window), nullptr));
    }

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
};

}  // namespace stowpocket
