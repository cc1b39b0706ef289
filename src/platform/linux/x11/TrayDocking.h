// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

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

    /// The program begins, or a manager announced itself; a tray that starts together with the program is met both
    /// ways.
    [[nodiscard]] Step managerAppeared(Manager manager);
    /// Some window was destroyed.
    [[nodiscard]] Step windowDestroyed(Manager window);
    /// The tray took our window in.
    void embedded();
    /// Our window stands in a container whose parent is the root, as in trays that proxy and in no real panel.
    [[nodiscard]] Step foundProxy();
    /// Our window was destroyed or put out onto the root.
    [[nodiscard]] Step lostWindow();

private:
    State state_ = State::waiting;
    Manager manager_ = 0;
};

}  // namespace stowpocket
