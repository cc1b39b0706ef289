// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// An ordinary window with a view inside. Destroying it takes it off the screen. Main thread.
class Window {
public:
    virtual ~Window() = default;
    [[nodiscard]] virtual bool isVisible() const = 0;
    virtual void center() = 0;
    /// Shows it, in front of this application's windows, with the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
    /// Puts it in front of every application's windows.
    virtual void orderFrontRegardless() = 0;
    virtual void close() = 0;
};

}  // namespace stowpocket
