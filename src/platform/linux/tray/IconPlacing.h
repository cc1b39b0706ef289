// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace stowpocket {

/// Follows the icon through trays that come late, leave, crash and start again. Each call tells what happened and
/// answers what to do about it; `undock` always leaves no window behind and `dock` asks with a fresh one.
class TrayDocking {
public:
    enum class State {
        waiting,    ///< for a tray to appear
        requested,  ///< a window was offered to the tray
        docked,     ///< the tray shows it
        proxied,    ///< the tray only copies its picture to somewhere else: clicks and drops would miss it
    };
    enum class Step { none, dock, undock };
    /// A tray manager's window; 0 for none.
    using Manager = std::uint32_t;

    [[nodiscard]] State state() const { return state_; }
    /// The tray that our window was last offered to; 0 when it is gone.
    [[nodiscard]] Manager manager() const { return manager_; }

    /// The program begins, or a manager announced itself; a tray that starts together with the program is met both
    /// ways.
    [[nodiscard]] Step managerAppeared(Manager manager);
    /// Some window was destroyed.
    [[nodiscard]] Step windowDestroyed(Manager window);
    /// The tray took our window in.
    void embedded();
    /// The tray took our window in a while ago, and no bar shows it. One that was still starting itself may have
    /// forgotten to show its bar; it does so for the next window.
    [[nodiscard]] Step foundUnseen();
    /// Our window stands in a container whose parent is the root, as in trays that proxy and in no real panel.
    [[nodiscard]] Step foundProxy();
    /// Our window was destroyed or put out onto the root.
    [[nodiscard]] Step lostWindow();

private:
    State state_ = State::waiting;
    Manager manager_ = 0;
    /// Whether the manager has been asked a second time. One that hides its bar on purpose is left alone then.
    bool isAskedAgain_ = false;
};

/// Decides where the icon is shown, by what the desktop offers now: in the tray, else as an item of a notifier host,
/// else in the pocket. The host is not asked about before the tray is known to be of no use.
class IconPlacing {
public:
    enum class Place { undecided, tray, notifier, pocket };

    [[nodiscard]] Place place() const { return place_; }
    /// Whether it matters if there is a notifier host.
    [[nodiscard]] bool wantsHost() const { return !isHostKnown() && !isTrayPromising(); }

    void setTray(TrayDocking::State state);
    /// The tray was offered a window and has not taken it in for long.
    void trayIsSlow();
    void setHost(bool isThere);
    /// The icon was offered as an item for long; where nobody has asked for its picture by then, it is not seen.
    void itemIsOffered();
    /// A host has asked for the item's picture, or the last one that did has gone.
    void setItemSeen(bool isSeen);
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
