// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/quickdrop/QuickDropRun.h"
#include "platform/linux/x11/XcbSession.h"

#include <cstdint>

struct xkb_context;

namespace stowpocket {

/// Presses copy combinations through the XTEST extension, like a keyboard.
class X11CopyKeys {
public:
    explicit X11CopyKeys(XcbSession& session);
    ~X11CopyKeys();
    X11CopyKeys(const X11CopyKeys&) = delete;
    X11CopyKeys& operator=(const X11CopyKeys&) = delete;

    /// Finds the keys in the current layout. Returns false when it has no such key, or keys cannot be pressed on
    /// this server.
    [[nodiscard]] bool prepare(CopyKey key);
    /// Releases every key that is held, which also ends a hotkey's grab of the keyboard, then presses the prepared
    /// combination. All requests go out together, since a program that sees only a modifier released may open its
    /// menu bar. Released keys are not pressed again, as they would stay down.
    void press();

private:
    XcbSession& session_;
    xkb_context* const context_;
    std::uint8_t controlKey_ = 0;
    std::uint8_t copyKey_ = 0;
    bool canPress_ = false;
};

/// Runs the Copy action of the Dolphin window `window` of the process `process` over the session bus. Any thread;
/// blocks for a fraction of a second at most. Returns false when the window is not found or does not answer.
[[nodiscard]] bool copyInDolphin(std::uint32_t process, std::uint32_t window);

}  // namespace stowpocket
