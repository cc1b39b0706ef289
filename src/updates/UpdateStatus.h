// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "updates/UpdateTransport.h"

#include <cstdint>
#include <optional>
#include <string>

namespace stowpocket {

enum class UpdateState {
    idle,
    checking,
    upToDate,
    offered,
    downloading,
    verifying,
    ready,  ///< fetched, and waiting for the user to have it installed
    installing,
    installed,
    failed,
};

/// The user's choices in the window of updates.
enum class UpdateChoice { install, openPage, skip, later, cancel };

/// The state of an update, as its window shows it.
struct UpdateStatus {
    UpdateState state = UpdateState::idle;
    std::string programName = {};
    std::string runningVersion = {};
    AppcastItem item = {};
    std::int64_t received = 0;
    std::optional<UpdateFailure> failure = {};
    /// Whether the program can replace itself with a new version.
    bool canInstall = false;
};

/// The one window of updates. Main thread.
class UpdateWindow {
public:
    virtual ~UpdateWindow() = default;
    /// Shows `status`. A window that appears does not take the keyboard focus: a key press meant for another window
    /// must not choose anything.
    virtual void show(const UpdateStatus& status) = 0;
    /// Gives the window the keyboard focus, at the request of the user.
    virtual void bringToFront() = 0;
    virtual void close() = 0;
    /// Emitted with the user's choice; closing the window is one too.
    [[nodiscard]] virtual Signal<UpdateChoice>& chosen() = 0;
};

}  // namespace stowpocket
