// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/drags/DropReading.h"
#include "platform/linux/x11/X11Events.h"

namespace stowpocket {

/// Reads what is dropped before Qt learns of the drop, on another thread and within limits of time and size, so that
/// no source can block the program. Then Qt gets the same message again. When Qt has handled it, it tells the source
/// that the drop is over.
///
/// It also makes up for what Qt loses: of the positions in its queue Qt takes the newest for all of them, whatever
/// window it was sent to. When a drag crosses one window into the next while the program is busy, the source then
/// waits for the next window's answer, and shows that nothing can be dropped there.
class X11IncomingDrops : public IncomingDrops, private X11EventFilter {
public:
    /// All references outlive it.
    X11IncomingDrops(const X11Connection& connection, Dispatch& dispatch, DirectSaves& saves,
                     const DropPatience& patience = {});

    [[nodiscard]] const ReceivedDrop& received() const override { return received_; }
    [[nodiscard]] bool promisesFiles(const QMimeData& data) const override;
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> promiseReceiver() override { return saves_.receiver(); }
    [[nodiscard]] std::shared_ptr<ItemProvider> promiseProvider() override { return saves_.itemProvider(); }

private:
    enum class State {
        idle,
        reading,
        handedOn,  ///< Qt will get the message again
    };

    bool handleEvent(const xcb_generic_event_t& event) override;
    void handleEnter(const xcb_client_message_event_t& message);
    void tellPosition() const;
    /// Returns true to keep the message from Qt for now.
    [[nodiscard]] bool handleDrop(const xcb_client_message_event_t& message);
    void read(const xcb_client_message_event_t& drop);
    void finishReading(const xcb_client_message_event_t& drop, int number, const DropReading& reading);
    void forgetDrag();

    const X11Connection& connection_;
    Dispatch& dispatch_;
    DirectSaves& saves_;
    const DropPatience patience_;
    xcb_client_message_event_t entered_{};
    /// The source has said where in the entered window it is, or that it has left.
    bool hasGoneOn_ = false;
    State state_ = State::idle;
    /// Counts the drags. What was read for an earlier one is too late.
    int number_ = 0;
    /// How many readings run. A source that hangs keeps a thread for a while.
    int readings_ = 0;
    ReceivedDrop received_;
    const std::shared_ptr<X11IncomingDrops*> self_ = std::make_shared<X11IncomingDrops*>(this);
};

}  // namespace stowpocket
