// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/quickdrop/Clipboard.h"
#include "platform/linux/quickdrop/QuickDropRun.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbSession.h"

#include <atomic>

namespace stowpocket {

/// Remembers which window of another program was active last. Qt's connection gets the events for that anyway. In a
/// Wayland session no X11 window is active while a Wayland program is in front.
class X11ActiveWindow : private X11EventFilter {
public:
    /// `connection` outlives it. Made after the application, on the main thread.
    explicit X11ActiveWindow(const X11Connection& connection);

    /// Any thread. 0 when there was none, or it was of a Wayland program. The window may be gone by now.
    [[nodiscard]] xcb_window_t lastForeign() const { return lastForeign_; }
    /// Any thread.
    [[nodiscard]] bool isOwn(xcb_window_t window) const { return connection_.isOwn(window); }

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void readActiveWindow();

    const X11Connection& connection_;
    std::atomic<xcb_window_t> lastForeign_ = x11None;
};

/// Pings the program of a window (_NET_WM_PING), which answers once it has handled the events sent before. The
/// answer goes to the root window, whose events are selected from the preparation until the end.
class X11WindowPing {
public:
    explicit X11WindowPing(XcbSession& session) : session_(session) {}

    /// Finds out whether the program supports the ping, so that sending it takes no time.
    void prepare(xcb_window_t window);
    [[nodiscard]] bool isPossible() const { return window_ != XCB_WINDOW_NONE; }
    void send() const;
    [[nodiscard]] bool isAnswer(const xcb_generic_event_t& event);
    void end();

private:
    void watchRoot(std::uint32_t events) const;

    XcbSession& session_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_timestamp_t time_ = XCB_CURRENT_TIME;
};

/// The desktop on one X server, through a connection of its own. One thread at a time.
class X11QuickDropDesktop : public QuickDropDesktop {
public:
    /// `windows` outlives it.
    X11QuickDropDesktop(std::unique_ptr<XcbSession> session, const X11ActiveWindow& windows);

    [[nodiscard]] std::uint32_t activeWindow() override;
    [[nodiscard]] std::string classOf(std::uint32_t window) override;
    [[nodiscard]] bool isOwn(std::uint32_t window) override { return windows_.isOwn(window); }
    [[nodiscard]] std::uint32_t lastForeignWindow() override { return windows_.lastForeign(); }
    bool activate(std::uint32_t window) override;
    [[nodiscard]] ClipboardSnapshot takeSnapshot() override;
    [[nodiscard]] bool copyOverBus(std::uint32_t window) override;
    [[nodiscard]] bool prepareKeys(CopyKey key, std::uint32_t window) override;
    void pressKeys() override;
    [[nodiscard]] bool awaitNewOwner() override;
    [[nodiscard]] std::vector<FileURL> filesOnClipboard() override;
    void restore(ClipboardSnapshot snapshot) override;

    /// Ends the events about new owners and pings, after a run.
    void finish() {
        reader_.watchOwner(false);
        ping_.end();
    }
    /// Answers programs that paste the restored clipboard. Does not wait.
    void serve() { session_->handleEvents(); }
    [[nodiscard]] const XcbSession& session() const { return *session_; }

private:
    [[nodiscard]] std::uint32_t cardinal(xcb_window_t window, const std::string& property);

    const std::unique_ptr<XcbSession> session_;
    const X11ActiveWindow& windows_;
    ClipboardReader reader_;
    ClipboardOwner owner_;
    X11CopyKeys keys_;
    X11WindowPing ping_;
    xcb_window_t copyOwner_ = XCB_WINDOW_NONE;
};

}  // namespace stowpocket
