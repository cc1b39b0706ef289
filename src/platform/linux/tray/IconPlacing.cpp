// SPDX-License-Identifier: MIT
#include "platform/linux/tray/IconPlacing.h"

namespace stowpocket {

using State = TrayDocking::State;

void IconPlacing::trayIs(State state) {
    if (state != tray_)
        isTraySlow_ = false;
    tray_ = state;
    decide();
}

void IconPlacing::trayIsSlow() {
    isTraySlow_ = tray_ == State::requested;
    decide();
}

void IconPlacing::hostIs(bool isThere) {
    isHostThere_ = isThere;
    decide();
}

void IconPlacing::itemIsOffered() {
    if (item_ == Item::offered)
        item_ = Item::unseen;
}

void IconPlacing::itemIsSeen(bool isSeen) {
    item_ = isSeen ? Item::seen : Item::unseen;
}

bool IconPlacing::isTrayPromising() const {
    return tray_ == State::docked || (tray_ == State::requested && !isTraySlow_);
}

void IconPlacing::decide() {
    if (tray_ == State::docked)
        place_ = Place::tray;
    else if (isTrayPromising())
        // Until the tray has answered the icon stays where it is seen.
        place_ = place_ == Place::tray ? Place::undecided : place_;
    else if (isHostThere_)
        place_ = *isHostThere_ ? Place::notifier : Place::pocket;
    else
        place_ = Place::undecided;
    if (place_ != Place::notifier)
        item_ = Item::offered;
}

}  // namespace stowpocket
