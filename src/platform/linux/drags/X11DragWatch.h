// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/drags/DragWatching.h"
#include "platform/linux/x11/X11Events.h"
#include "platform/linux/x11/X11Requestor.h"

#include <QTimer>

namespace stowpocket {

/// Tells of drags of other programs, anywhere on the desktop, that carry files or promise them. Between drags it
/// sleeps: the server tells when one begins.
class X11DragWatch : private X11EventFilter {
public:
    /// `connection` outlives it.
    explicit X11DragWatch(const X11Connection& connection);

    Signal<> began;
    /// Emitted when no drag is on any more after `began`, and once more when the source goes after the buttons did.
    Signal<DragEnd> ended;

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    [[nodiscard]] bool isButtonHeld() const;
    void ownerChanged(xcb_window_t owner, xcb_timestamp_t time);
    void answered(const xcb_selection_notify_event_t& answer);
    /// `time` is that of what happened, where the server told one.
    void take(DragWatching::Step step, xcb_timestamp_t time = XCB_CURRENT_TIME);

    const X11Connection& connection_;
    const X11Requestor requestor_;
    DragWatching watching_;
    /// Runs while a Wayland program drags, for which its compositor, the window manager here, stands in.
    QTimer waylandDrag_;
    std::uint8_t ownerEvent_ = 0;
    QTimer buttons_;
    QTimer settling_;
};

}  // namespace stowpocket
