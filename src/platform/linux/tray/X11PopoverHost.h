// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/X11FileDrag.h"
#include "platform/linux/tray/SwayPlacing.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtPopover.h"

#include <QDeadlineTimer>
#include <QObject>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The server time of the user's click, which launchers append to the id of what they start. Empty for an id without
/// a time.
[[nodiscard]] std::optional<std::uint32_t> startupTime(std::string_view id);

/// The message of the startup notification protocol that the program with this id has started.
[[nodiscard]] std::string startupCompleteMessage(std::string_view id);

/// The last start by which the user wanted a window of this program, under its launcher's id. The window is shown
/// with that id, so that it may take the focus. The launcher is told, so that it stops showing a busy pointer.
class X11Startup {
public:
    /// `connection` outlives it.
    explicit X11Startup(const X11Connection& connection) : connection_(connection) {}

    /// `id` has the form of DESKTOP_STARTUP_ID. The launcher is told after this turn of the main loop.
    void begin(std::string id);
    /// Gives the id to a window that is about to be shown.
    void markWindow(xcb_window_t window) const;
    /// Gives the time of the user's request to the window once it is shown, and forgets the start. Returns that
    /// time, or 0 when it is not known.
    [[nodiscard]] xcb_timestamp_t takeTime(xcb_window_t window);

private:
    [[nodiscard]] bool isUnderWay() const { return !id_.empty() && !outdated_.hasExpired(); }
    void tellLauncher(const std::string& id) const;

    const X11Connection& connection_;
    std::string id_;
    QDeadlineTimer outdated_;
    QObject context_;
};

/// Popovers under an X11 window manager.
class X11PopoverHost : public PopoverHost {
public:
    /// `connection` and `fileDrag` outlive it.
    X11PopoverHost(const X11Connection& connection, X11FileDrag& fileDrag)
        : connection_(connection),
          fileDrag_(fileDrag),
          startup_(connection),
          sway_(SwayPlacing::ofSession(connection)) {}

    /// Requests of other processes to show a popover put what their launchers gave them here.
    [[nodiscard]] X11Startup& startup() { return startup_; }

    [[nodiscard]] bool blendsWindows() const override;
    void willShow(QWidget& window) override;
    void willPlace(QWidget& window, const QPoint& corner) override {
        if (sway_)
            sway_->place(window, corner);
    }
    /// Sway would answer with its middle.
    [[nodiscard]] bool takesSecondRequests() const override { return sway_ == nullptr; }
    void afterDrag(std::function<void()> work) override { fileDrag_.whenOver(std::move(work)); }
    void focus(QWidget& window) override;

private:
    const X11Connection& connection_;
    X11FileDrag& fileDrag_;
    X11Startup startup_;
    std::optional<bool> changesDialogs_;
    const std::unique_ptr<SwayPlacing> sway_;
};

}  // namespace stowpocket
