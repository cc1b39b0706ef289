// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/x11/SelectionReader.h"
#include "platform/linux/x11/X11Events.h"
#include "platform/qt/QtDrops.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// How long the source of a drop is waited for. Each limit in all counts from the drop on.
struct DropPatience {
    /// Without any sign of the source.
    std::chrono::milliseconds silence{2000};
    /// For the list of files, which is short.
    std::chrono::milliseconds list{2000};
    /// For a picture or text, which goes into a file and may be large, while it keeps coming.
    std::chrono::milliseconds contents{30'000};
};

/// The data of one drag, as its source hands it over. Each call ends within a time limit.
class DragData {
public:
    virtual ~DragData() = default;

    struct List {
        std::optional<SelectionFailure> failure;
        std::string text;
    };
    [[nodiscard]] virtual List list(std::string_view format) = 0;
    /// None when all of it is in the file now.
    [[nodiscard]] virtual std::optional<SelectionFailure> write(std::string_view format, const QString& path) = 0;
};

/// What was read of a drop, on whatever thread.
struct DropReading {
    std::string uriList;
    std::optional<DroppedContents> contents;
};

/// Reads what a drop of these formats brings to the shelf: the list of files, and where that names none on this
/// machine a picture, or text when no file is promised either. A picture goes before a promise because web browsers
/// offer both, and keep the promise by fetching the picture once more, which may bring an error page. A source that
/// was too late once is asked for nothing more.
[[nodiscard]] DropReading readDrop(DragData& data, const std::vector<std::string>& formats);

/// Reads what is dropped before Qt hears of the drop, on another thread and with limits of time and size, so that no
/// source can keep the program waiting. Qt then gets the same message once more; when it has handled that, it tells
/// the source that the drop is over.
class X11IncomingDrops : public IncomingDrops, private X11EventFilter {
public:
    /// All outlive it.
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
        handedOn,  ///< the message is on its way back to us
    };

    bool handleEvent(const xcb_generic_event_t& event) override;
    void handleEnter(const xcb_client_message_event_t& message);
    /// Whether Qt shall not have it now.
    [[nodiscard]] bool handleDrop(const xcb_client_message_event_t& message);
    void read(const xcb_client_message_event_t& drop);
    void finishReading(const xcb_client_message_event_t& drop, int number, const DropReading& reading);
    void forgetDrag();

    const X11Connection& connection_;
    Dispatch& dispatch_;
    DirectSaves& saves_;
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
