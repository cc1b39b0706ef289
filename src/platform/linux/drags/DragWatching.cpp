// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DragWatching.h"

#include <utility>

namespace stowpocket {

DragWatching::Step DragWatching::ownerChanged(Owner owner, bool isButtonHeld) {
    if (owner == Owner::another && isButtonHeld) {
        state_ = State::asking;
        ending_ = DragEnd::released;
        return Step::ask;
    }
    if (owner != Owner::another)
        ending_ = DragEnd::sourceGone;
    if (state_ == State::resting && std::exchange(mayStillDrop_, false)) {
        ending_ = DragEnd::sourceGone;
        return Step::end;
    }
    if (state_ != State::asking && state_ != State::dragging)
        return Step::none;
    state_ = State::settling;
    return Step::settle;
}

DragWatching::Step DragWatching::answered(DragOffer offer) {
    if (state_ != State::asking)
        return Step::none;
    if (offer == DragOffer::nothing)
        return finish();
    state_ = State::dragging;
    // Whoever was told of a drag before may have seen its drop, and this may be another one.
    isAnnounced_ = true;
    return Step::announce;
}

DragWatching::Step DragWatching::buttonsSeen(bool isButtonHeld) {
    if (isButtonHeld || (state_ != State::asking && state_ != State::dragging))
        return Step::none;
    state_ = State::settling;
    return Step::settle;
}

DragWatching::Step DragWatching::settled() {
    return state_ == State::settling ? finish() : Step::none;
}

DragWatching::Step DragWatching::finish() {
    state_ = State::resting;
    if (isAnnounced_)
        mayStillDrop_ = ending_ == DragEnd::released;
    return std::exchange(isAnnounced_, false) ? Step::end : Step::rest;
}

}  // namespace stowpocket
