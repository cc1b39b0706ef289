// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace stowpocket {

/// Follows the icon through trays that start late, leave, crash and start again. Each call reports an event and
/// returns what to do about it. `undock` leaves no window behind, and `dock` offers a new one.
class TrayDocking {
public:
    enum class State {
        waiting,    ///< for a tray
        requested,  ///< a window was offered to the tray
        docked,     ///< the tray shows it
        proxied,    ///< the tray only shows a copy of its picture elsewhere, which takes no clicks or drops
    };
    enum class Step { none, dock, undock };
    /// The window of a tray manager; 0 for none.
    using Manager = std::uint32_t;

    [[nodiscard]] State state() const { return state_; }
    /// The tray that our window was last offered to; 0 when it is gone.
    [[nodiscard]] Manager manager() const { return manager_; }

    /// The program begins, or a manager announced itself. Both may happen for one tray that starts together with the
    /// program.
    [[nodiscard]] Step managerAppeared(Manager manager);
    /// A window was destroyed, perhaps the manager.
    [[nodiscard]] Step windowDestroyed(Manager window);
    /// The tray has embedded our window.
    void embedded();
    /// The tray embedded our window a while ago, but no bar shows it. A tray that was still starting may have
    /// forgotten to show its bar, and does so for the next window.
    [[nodiscard]] Step foundUnseen();
    /// Our window is in this container right below the root window. Trays that proxy make one for each icon; a real
    /// tray's own window may also be there, as Polybar's is, which lies over its bar.
    [[nodiscard]] Step foundBelowRoot(Manager container);
    /// Our window was destroyed or moved out onto the root window.
    [[nodiscard]] Step lostWindow();

private:
    State state_ = State::waiting;
    Manager manager_ = 0;
    /// Whether the manager was asked a second time. A manager that hides its bar on purpose is then left alone.
    bool isAskedAgain_ = false;
};

/// Decides where the icon is shown, by what the desktop offers now: in the tray, else as an item of a notifier host,
/// else in the pocket. The host is not asked for until the tray is known to be useless.
class IconPlacing {
public:
    enum class Place { undecided, tray, notifier, pocket };

    [[nodiscard]] Place place() const { return place_; }
    /// Whether the decision needs to know if there is a notifier host.
    [[nodiscard]] bool wantsHost() const { return !isHostKnown() && !isTrayPromising(); }

    void setTray(TrayDocking::State state);
    /// The tray was offered a window and has not embedded it in time.
    void trayIsSlow();
    void setHost(bool isThere);
    /// The icon has been offered as an item for some time. If no host has asked for its picture by now, it is not
    /// visible.
    void itemIsOffered();
    /// A host has asked for the picture of the item, or the last such host has gone.
    void setItemSeen(bool isSeen);
    /// Whether the pocket is always shown. Some watchers announce hosts that show nothing.
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
