// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/drags/X11Requestor.h"
#include "platform/linux/x11/X11Events.h"

#include <QTimer>

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>

namespace stowpocket {

/// What a drag carries for the shelf, as far as its source says.
enum class DragOffer { nothing, files, promise, unknown };

/// Judges a drag by its types, each an atom. `targets` is the answer to the plain question for the types; nothing
/// when the source refused it. `typeList` is the list on the window of the source; empty when there is none. Qt
/// sources refuse the question, and make the list only for more than three types.
[[nodiscard]] DragOffer judgeDrag(std::optional<std::span<const std::uint32_t>> targets,
                                  std::span<const std::uint32_t> typeList, std::uint32_t uriList,
                                  std::uint32_t directSave);

/// Which programs can hear of a drag by themselves: those of the same kind as its source.
enum class DragOrigin { x11, wayland };

/// How a drag ended, as seen by other programs.
enum class DragEnd {
    released,    ///< the buttons are up, but a drop on one of our windows may still arrive
    sourceGone,  ///< the source has withdrawn its offer, so nothing more will arrive
};

/// What a window of ours has seen of a drag.
enum class DragSign { entered, left, dropped };

/// Follows the drags of other programs from the first sign to the end. Each call reports an event and returns what to
/// do about it. Between drags there is nothing to do.
class DragWatching {
public:
    enum class Owner { nobody, ourselves, another };
    enum class Step {
        none,
        ask,       ///< for the types, and watch the buttons from now on
        announce,  ///< a drag that carries something for the shelf
        settle,    ///< stop watching the buttons, and give a drop time to arrive
        rest,      ///< stop watching the buttons
        end,       ///< of an announced drag, as `ending` says; again if its source goes away later
    };

    /// The selection that stands for a drag has a new owner, or the same one again.
    [[nodiscard]] Step ownerChanged(Owner owner, bool isButtonHeld);
    [[nodiscard]] Step answered(DragOffer offer);
    /// Reports whether a button is still held.
    [[nodiscard]] Step buttonsSeen(bool isButtonHeld);
    /// The time for a late drop is over.
    [[nodiscard]] Step settled();

    [[nodiscard]] DragEnd ending() const { return ending_; }

private:
    enum class State { resting, asking, dragging, settling };

    [[nodiscard]] Step finishDrag();

    State state_ = State::resting;
    bool isAnnounced_ = false;
    bool mayStillDrop_ = false;
    DragEnd ending_ = DragEnd::released;
};

/// How long the drag of a Wayland program is taken to be under way. The X server hears neither of its buttons nor of
/// its end. While it lasts the server's pointer stays where it was, and Mutter answers questions for its types. KWin
/// and wlroots answer only while it is over X11 windows: there it is taken to be over some time after it began or
/// left a window of ours. Times are those of any one clock.
class WaylandDrag {
public:
    using Time = std::chrono::milliseconds;
    struct Pointer {
        std::int16_t x = 0;
        std::int16_t y = 0;
        friend bool operator==(const Pointer&, const Pointer&) = default;
    };

    enum class Types { toldThroughout, toldAtTimes };

    void begin(Time now, Pointer pointer, Types types);
    void end() { isOn_ = false; }
    /// The answer to a question for its types.
    void answered(bool hasTypes, Time now);
    void seen(DragSign sign, Time now);

    [[nodiscard]] bool isOn(Time now, Pointer pointer) const;
    /// Whether it is time to ask for its types again.
    [[nodiscard]] bool isWorthAsking(Time now) const;

private:
    bool isOn_ = false;
    Pointer pointer_;
    Time lastTime_{};
    Types types_ = Types::toldAtTimes;
    Time answeredAt_{};
};

/// Announces drags of other programs, anywhere on the desktop, that carry files or promise them. Between drags it
/// sleeps until the server reports the next one.
class X11DragWatch : private X11EventFilter {
public:
    /// `connection` outlives it.
    explicit X11DragWatch(const X11Connection& connection);

    Signal<DragOrigin> began;
    /// Emitted when an announced drag is over, and again if its source goes away later.
    Signal<DragEnd> ended;

    /// Takes note of what a surface of ours has seen that is no X11 window. What it has entered is the drag of a
    /// Wayland program, whether the server has been told of it or not.
    void note(DragSign sign);
    /// Whether a Wayland program is dragging, whose buttons the server does not know.
    [[nodiscard]] bool isWaylandDragOn() const;
    /// Emitted when such a drag has ended, wherever.
    Signal<> waylandDragEnded;
    /// Emitted when such a drag has ended with a drop on the window.
    Signal<xcb_window_t> waylandDropped;

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    [[nodiscard]] bool isButtonHeld() const;
    [[nodiscard]] WaylandDrag::Pointer pointer() const;
    [[nodiscard]] WaylandDrag::Time now() const;
    void lookAtButtons();
    void beginWaylandDrag();
    void handleMessage(const xcb_client_message_event_t& message);
    void ownerChanged(xcb_window_t owner, xcb_timestamp_t time);
    void answered(const xcb_selection_notify_event_t& answer);
    /// `time` is the time of the event, if the server gave one.
    void takeStep(DragWatching::Step step, xcb_timestamp_t time = XCB_CURRENT_TIME);

    const X11Connection& connection_;
    const X11Requestor requestor_;
    DragWatching watching_;
    /// The owner of its selection is the compositor, which is the window manager here.
    WaylandDrag waylandDrag_;
    bool isWaylandDrag_ = false;
    std::uint8_t ownerEvent_ = 0;
    QTimer buttons_;
    QTimer settling_;
};

}  // namespace stowpocket
