// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/ArrivalFolder.h"
#include "platform/linux/drags/ArrivalWatch.h"
#include "platform/linux/drags/DirectSave.h"
#include "platform/linux/x11/X11Requestor.h"
#include "services/Dispatch.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace stowpocket {

/// One promise on its way: the source of the drag has been told a place in a fresh folder, and its reply and the
/// files are awaited.
class X11DirectSave : public std::enable_shared_from_this<X11DirectSave> {
public:
    /// Runs once; none when nothing arrived.
    using Completion = std::function<void(const X11DirectSave&, const std::optional<ArrivalFolder>&)>;

    X11DirectSave(const X11Connection& connection, Dispatch& dispatch, std::chrono::milliseconds timeLimit,
                  Completion completion);

    /// Asks the source of the drag that is being dropped, with the time of that drop.
    void begin(const FileURL& destination, xcb_timestamp_t dropTime);

    [[nodiscard]] xcb_window_t requestor() const { return requestor_.window(); }
    /// Whether the event, which tells that a window is gone, is about the source. Numbers of windows are used again:
    /// an event from before the question was about another.
    [[nodiscard]] bool isAboutSource(const xcb_destroy_notify_event_t& event, std::uint32_t sequence) const;
    void replied(const xcb_selection_notify_event_t& event);
    void sourceGone() { take(save_.sourceGone()); }

private:
    void handleWritten();
    void waitOn();
    [[nodiscard]] DirectSave::Arrival arrival() const;
    void take(DirectSave::Step step);

    const X11Connection& connection_;
    Dispatch& dispatch_;
    const std::chrono::milliseconds timeLimit_;
    const Completion completion_;
    const X11Requestor requestor_;
    DirectSave save_;
    xcb_window_t source_ = x11None;
    unsigned asked_ = 0;
    std::optional<ArrivalFolder> folder_;
    std::unique_ptr<ArrivalWatch> watch_;
    std::unique_ptr<ScheduledWork> patience_;
};

}  // namespace stowpocket
