// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QDeadlineTimer>
#include <QObject>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The moment of the user's click in server time, which launchers write at the end of the id that they give to what
/// they start; none when it tells none.
[[nodiscard]] std::optional<std::uint32_t> startupTime(std::string_view id);

/// The message, as the startup notification protocol has it, that what was started under this id is there.
[[nodiscard]] std::string startupCompleteMessage(std::string_view id);

/// What the user last started to get a window of this program, as its launcher named it: the window is shown under
/// that name, so that it may take the focus, and the launcher is told, so that it stops showing a busy pointer.
class X11Startup {
public:
    /// `connection` outlives it.
    explicit X11Startup(const X11Connection& connection) : connection_(connection) {}

    /// `id` as in DESKTOP_STARTUP_ID. The launcher is told once this turn of the main loop is over.
    void begin(std::string id);
    /// For a window that is about to be shown: whose wish it is.
    void markWindow(xcb_window_t window) const;
    /// For the window once it is shown: when the user wished it, which is then settled. Answers that time, or 0 when
    /// it is not known.
    [[nodiscard]] xcb_timestamp_t takeTime(xcb_window_t window);

private:
    [[nodiscard]] bool isUnderWay() const { return !id_.empty() && !outdated_.hasExpired(); }
    void tellLauncher(const std::string& id) const;

    const X11Connection& connection_;
    std::string id_;
    QDeadlineTimer outdated_;
    QObject context_;
};

}  // namespace stowpocket
