// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/quickdrop/ClipboardOwner.h"
#include "platform/linux/quickdrop/ClipboardReader.h"
#include "platform/linux/quickdrop/QuickDropRun.h"
#include "platform/linux/quickdrop/X11ActiveWindow.h"
#include "platform/linux/quickdrop/X11CopyKeys.h"
#include "platform/linux/quickdrop/X11WindowPing.h"

namespace stowpocket {

/// The desktop of one X server, on a connection of its own. One thread at a time.
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

    /// Call when the run is over: the server need not tell of new owners or answers any more.
    void finish() {
        reader_.watchOwner(false);
        ping_.end();
    }
    /// Answers those who want what was put back. Returns when nothing has come, without waiting.
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
