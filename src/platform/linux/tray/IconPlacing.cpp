// SPDX-License-Identifier: MIT
#include "platform/linux/tray/IconPlacing.h"

namespace stowpocket {

TrayDocking::Step TrayDocking::managerAppeared(Manager manager) {
    const bool isAtIt = state_ == State::requested || state_ == State::docked;
    if (isAtIt && manager == manager_)
        return Step::none;
    manager_ = manager;
    isAskedAgain_ = false;
    const bool isThere = manager != 0;
    state_ = isThere ? State::requested : State::waiting;
    return isThere ? Step::dock : Step::none;
}

TrayDocking::Step TrayDocking::windowDestroyed(Manager window) {
    if (window != manager_ || manager_ == 0)
        return Step::none;
    manager_ = 0;
    state_ = State::waiting;
    return Step::undock;
}

void TrayDocking::embedded() {
    if (state_ == State::requested)
        state_ = State::docked;
}

TrayDocking::Step TrayDocking::foundUnseen() {
    if (state_ != State::docked || isAskedAgain_)
        return Step::none;
    isAskedAgain_ = true;
    state_ = State::requested;
    return Step::dock;
}

TrayDocking::Step TrayDocking::foundBelowRoot(Manager container) {
    if (state_ != State::docked || container == manager_)
        return Step::none;
    state_ = State::proxied;
    return Step::undock;
}

TrayDocking::Step TrayDocking::lostWindow() {
    if (state_ != State::docked && state_ != State::requested)
        return Step::none;
    // The same manager gets no new offer at once: a manager that throws its icons out would get them back forever.
    state_ = State::waiting;
    return Step::undock;
}

using State = TrayDocking::State;

void IconPlacing::setTray(State state) {
    if (state != tray_)
        isTraySlow_ = false;
    tray_ = state;
    decide();
}

void IconPlacing::trayIsSlow() {
    isTraySlow_ = tray_ == State::requested;
    decide();
}

void IconPlacing::setHost(bool isThere) {
    isHostThere_ = isThere;
    decide();
}

void IconPlacing::itemIsOffered() {
    if (item_ == Item::offered)
        item_ = Item::unseen;
}

void IconPlacing::setItemSeen(bool isSeen) {
    item_ = isSeen ? Item::seen : Item::unseen;
}

bool IconPlacing::isTrayPromising() const {
    return tray_ == State::docked || (tray_ == State::requested && !isTraySlow_);
}

void IconPlacing::decide() {
    if (tray_ == State::docked)
        place_ = Place::tray;
    else if (isTrayPromising())
        // The icon stays where it is visible until the tray has answered.
        place_ = place_ == Place::tray ? Place::undecided : place_;
    else if (isHostThere_)
        place_ = *isHostThere_ ? Place::notifier : Place::pocket;
    else
        place_ = Place::undecided;
    if (place_ != Place::notifier)
        item_ = Item::offered;
}

}  // namespace stowpocket
