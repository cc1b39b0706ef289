// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <atomic>

namespace stowpocket {

/// Remembers which window of another program was active last. The server tells Qt of each change anyway.
class X11ActiveWindow : private QAbstractNativeEventFilter {
public:
    /// `connection` outlives it. Made after the application, on the main thread.
    explicit X11ActiveWindow(const X11Connection& connection);

    /// Any thread. 0 when there was none; the window may be gone since.
    [[nodiscard]] xcb_window_t lastForeign() const { return lastForeign_; }
    /// Any thread.
    [[nodiscard]] bool isOwn(xcb_window_t window) const { return connection_.isOwn(window); }

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void look();

    const X11Connection& connection_;
    std::atomic<xcb_window_t> lastForeign_ = x11None;
    /// What is posted for later is dropped with it.
    QObject context_;
};

}  // namespace stowpocket
