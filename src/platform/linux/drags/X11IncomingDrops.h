// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DropReading.h"
#include "platform/linux/drags/X11DirectSaves.h"
#include "platform/linux/x11/X11Events.h"
#include "platform/qt/QtDrops.h"

namespace stowpocket {

/// Reads what is dropped before Qt hears of the drop, on another thread and with limits of time and size, so that no
/// source can keep the program waiting. Qt then gets the same message once more; when it has handled that, it tells
/// the source that the drop is over.
class X11IncomingDrops : public IncomingDrops, private X11EventFilter {
public:
    /// All outlive it.
    X11IncomingDrops(const X11Connection& connection, Dispatch& dispatch, X11DirectSaves& saves,
                     const DropPatience& patience = {});

    [[nodiscard]] const ReceivedDrop& received() const override { return received_; }
    [[nodiscard]] bool promisesFiles(const QMimeData& data) const override;
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> promiseReceiver() override { return saves_.receiver(); }
    [[nodiscard]] std::shared_ptr<ItemProvider> promiseProvider() override { return saves_.itemProvider(); }

private:
    enum class State {
        idle,
        reading,
        handedOn,  ///< the message is on its way back to us
    };

    bool handleEvent(const xcb_generic_event_t& event) override;
    void entered(const xcb_client_message_event_t& message);
    /// Whether Qt shall not have it now.
    [[nodiscard]] bool dropped(const xcb_client_message_event_t& message);
    void read(const xcb_client_message_event_t& drop);
    void finished(const xcb_client_message_event_t& drop, int number, const DropReading& reading);
    void forget();

    const X11Connection& connection_;
    Dispatch& dispatch_;
    X11DirectSaves& saves_;
    const DropPatience patience_;
    xcb_client_message_event_t entered_{};
    State state_ = State::idle;
    /// Of the drag; what was read for another comes too late.
    int number_ = 0;
    /// Sources that hang keep a thread each, for a while.
    int readings_ = 0;
    ReceivedDrop received_;
    const std::shared_ptr<X11IncomingDrops*> self_ = std::make_shared<X11IncomingDrops*>(this);
};

}  // namespace stowpocket
