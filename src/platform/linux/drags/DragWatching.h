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

/// What a drag somewhere on the desktop carries for the shelf, as far as its source tells.
enum class DragOffer { nothing, files, promise, unknown };

/// Judges by types, each a number that the window system gave its name. `targets` is the answer to the plain question
/// which types there are, none when the source refused it; `typeList` is what such a source may have noted on its
/// window, empty when it has not. Qt sources refuse, and note the types only when there are more than three.
[[nodiscard]] DragOffer judgeDrag(std::optional<std::span<const std::uint32_t>> targets,
                                  std::span<const std::uint32_t> typeList, std::uint32_t uriList,
                                  std::uint32_t directSave);

/// How a drag ended, as seen from outside.
enum class DragEnd {
    released,    ///< the buttons are up; a drop on one of our windows may still be on its way
    sourceGone,  ///< the source has taken its offer back: nothing more will come
};

/// Follows the drags of other programs from the first sign to the end. Each call tells what happened and answers what
/// to do about it; at rest nothing is to be done at all.
class DragWatching {
public:
    enum class Owner { nobody, ourselves, another };
    enum class Step {
        none,
        ask,       ///< what it carries, and look at the buttons from now on
        announce,  ///< a drag that carries something for the shelf
        settle,    ///< look at the buttons no more; a drop gets a moment to arrive
        rest,      ///< look at the buttons no more
        end,       ///< of what was announced; `ending` tells how, and once more when the source has gone since
    };

    /// The selection that stands for a drag has another owner, or the same one once more.
    [[nodiscard]] Step ownerChanged(Owner owner, bool isButtonHeld);
    [[nodiscard]] Step answered(DragOffer offer);
    /// What the look at the buttons found.
    [[nodiscard]] Step buttonsSeen(bool isButtonHeld);
    /// The moment is over.
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
    void takeStep(DragWatching::Step step, xcb_timestamp_t time = XCB_CURRENT_TIME);

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
