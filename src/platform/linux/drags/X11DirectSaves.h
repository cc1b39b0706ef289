// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/X11DirectSave.h"
#include "platform/linux/x11/X11Events.h"
#include "services/Dragging.h"

#include <memory>
#include <vector>

namespace stowpocket {

/// Files promised by the direct-save protocol (XDS), as archive managers and mail programs drag them. Nothing waits:
/// a source that unpacks for minutes delivers minutes after the drop.
class X11DirectSaves : private X11EventFilter {
public:
    static constexpr std::chrono::milliseconds usualTimeLimit = std::chrono::seconds(60);

    /// `connection` and `dispatch` outlive it, and it outlives every receiver and provider. A source that has neither
    /// replied nor written anything for `timeLimit` is given up.
    X11DirectSaves(const X11Connection& connection, Dispatch& dispatch,
                   std::chrono::milliseconds timeLimit = usualTimeLimit);
    /// What is still on its way counts as failed.
    ~X11DirectSaves() override;

    /// The type that stands for a promise among those that a drag offers.
    static constexpr std::string_view format = "XdndDirectSave0";

    /// The promise of the drag that is being dropped, as its files and as one thing.
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> receiver();
    [[nodiscard]] std::shared_ptr<ItemProvider> itemProvider();

    /// Has the source of the drag that is being dropped write its files into a fresh folder in `destination`.
    /// `completion` runs once, on the main thread, during the call or after it; with none when nothing arrived.
    void save(const FileURL& destination, std::function<void(const std::optional<ArrivalFolder>&)> completion);
    [[nodiscard]] Dispatch& dispatch() const { return dispatch_; }

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void handleReply(const xcb_selection_notify_event_t& reply);
    void handleGone(const xcb_destroy_notify_event_t& event, std::uint32_t sequence);

    const X11Connection& connection_;
    Dispatch& dispatch_;
    const std::chrono::milliseconds timeLimit_;
    /// Of the drop that is handled now or was handled last.
    xcb_timestamp_t dropTime_ = XCB_CURRENT_TIME;
    /// Each is out of the list before its completion is passed on.
    std::vector<std::shared_ptr<X11DirectSave>> saves_;
};

}  // namespace stowpocket
