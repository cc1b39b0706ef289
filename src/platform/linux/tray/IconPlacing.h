// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/TrayDocking.h"

#include <optional>

namespace stowpocket {

/// Decides where the icon is shown, by what the desktop offers now: in the tray, else as an item of a notifier host,
/// else in the pocket. The host is not asked about before the tray is known to be of no use.
class IconPlacing {
public:
    enum class Place { undecided, tray, notifier, pocket };

    [[nodiscard]] Place place() const { return place_; }
    /// Whether it matters if there is a notifier host.
    [[nodiscard]] bool wantsHost() const { return !isHostKnown() && !isTrayPromising(); }

    void trayIs(TrayDocking::State state);
    /// The tray was offered a window and has not taken it in for long.
    void trayIsSlow();
    void hostIs(bool isThere);
    /// The icon was offered as an item for long; where nobody has asked for its picture by then, it is not seen.
    void itemIsOffered();
    /// A host has asked for the item's picture, or the last one that did has gone.
    void itemIsSeen(bool isSeen);
    /// Whether the pocket stands all the time. Some watchers tell of hosts that show nothing.
    [[nodiscard]] bool wantsPocket() const {
        return place_ == Place::pocket || (place_ == Place::notifier && item_ == Item::unseen);
    }

private:
    enum class Item { offered, unseen, seen };

    [[nodiscard]] bool isHostKnown() const { return isHostThere_.has_value(); }
    [[nodiscard]] bool isTrayPromising() const;
    void decide();

    Place place_ = Place::undecided;
    TrayDocking::State tray_ = TrayDocking::State::requested;
    bool isTraySlow_ = false;
    std::optional<bool> isHostThere_;
    Item item_ = Item::offered;
};

}  // namespace stowpocket
