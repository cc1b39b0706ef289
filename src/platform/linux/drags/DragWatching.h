// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/drags/X11Requestor.h"
#include "platform/linux/x11/X11Events.h"

#include <QTimer>

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

/// Announces drags of other programs, anywhere on the desktop, that carry files or promise them. Between drags it
/// sleeps until the server reports the next one.
class X11DragWatch : private X11EventFilter {
public:
    /// `connection` outlives it.
    explicit X11DragWatch(const X11Connection& connection);

    Signal<DragOrigin> began;
    /// Emitted when an announced drag is over, and again if its source goes away later.
    Signal<DragEnd> ended;

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    [[nodiscard]] bool isButtonHeld() const;
    void ownerChanged(xcb_window_t owner, xcb_timestamp_t time);
    void answered(const xcb_selection_notify_event_t& answer);
    /// `time` is the time of the event, if the server gave one.
    void takeStep(DragWatching::Step step, xcb_timestamp_t time = XCB_CURRENT_TIME);

    const X11Connection& connection_;
    const X11Requestor requestor_;
    DragWatching watching_;
    /// Runs during the drag of a Wayland program. The owner of its selection is the compositor, which is the window
    /// manager here.
    QTimer waylandDrag_;
    std::uint8_t ownerEvent_ = 0;
    QTimer buttons_;
    QTimer settling_;
};

}  // namespace stowpocket
