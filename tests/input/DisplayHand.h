// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/XcbSession.h"

#include <string>
#include <vector>
#include <xcb/xinput.h>

namespace stowpocket {

/// Kernel key codes plus 8, of the keys that the tests press.
namespace key {
inline constexpr std::uint8_t a = 38, s = 39, d = 40, l = 46, up = 111, f2 = 68, f5 = 71, pad5 = 84, escape = 9,
                              enter = 36, one = 10, grave = 49, shift = 50, control = 37, alt = 64, capsLock = 66,
                              numLock = 77, super = 133;
}

/// A user: keys, clicks and looks at the display, as another program sees them.
class DisplayHand {
public:
    DisplayHand();

    [[nodiscard]] XcbSession& session() { return *session_; }
    void down(std::uint8_t key) { fake(XCB_KEY_PRESS, key); }
    void up(std::uint8_t key) { fake(XCB_KEY_RELEASE, key); }
    /// The same on the keyboard itself, not on the one that other programs press keys on.
    void downOnKeyboard(std::uint8_t key) { fakeOnKeyboard(XCB_INPUT_DEVICE_KEY_PRESS, key); }
    void upOnKeyboard(std::uint8_t key) { fakeOnKeyboard(XCB_INPUT_DEVICE_KEY_RELEASE, key); }
    /// All down in their order, then up again in reverse.
    void press(const std::vector<std::uint8_t>& keys);
    void moveTo(int x, int y);
    void buttonDown(std::uint8_t button) { fake(XCB_BUTTON_PRESS, button); }
    void buttonUp(std::uint8_t button) { fake(XCB_BUTTON_RELEASE, button); }
    /// Returns once the server has done all of the above.
    void sync();

    [[nodiscard]] std::uint16_t lockState();
    [[nodiscard]] xcb_window_t activeWindow();
    [[nodiscard]] xcb_window_t clipboardOwner();
    [[nodiscard]] std::string textOf(xcb_window_t window, const std::string& property);
    void setProperty(xcb_window_t window, const std::string& name, xcb_atom_t type, std::uint8_t format,
                     const std::string& bytes);
    /// Raises a window and moves it so that it lies under the pointer, which is at this place.
    [[nodiscard]] bool putUnder(xcb_window_t window, std::pair<int, int> pointer);
    /// Has the window manager give a window the focus, as its user would; false when it never does.
    [[nodiscard]] bool bringToFront(xcb_window_t window);
    /// A window of another program than the one tested, managed and with the focus.
    [[nodiscard]] xcb_window_t openForeignWindow();

private:
    [[nodiscard]] bool isUnderPointer(xcb_window_t window);
    void fakeOnKeyboard(std::uint8_t type, std::uint8_t key);
    void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
};

}  // namespace stowpocket
