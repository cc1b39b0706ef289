// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DragOffer.h"

namespace stowpocket {

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

    [[nodiscard]] Step finish();

    State state_ = State::resting;
    bool isAnnounced_ = false;
    bool mayStillDrop_ = false;
    DragEnd ending_ = DragEnd::released;
};

}  // namespace stowpocket
