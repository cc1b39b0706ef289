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

/// What the user answers in the window of updates.
enum class UpdateChoice { install, openPage, skip, later, cancel };

/// Where an update stands, for its window.
struct UpdateStatus {
    UpdateState state = UpdateState::idle;
    std::string programName = {};
    std::string runningVersion = {};
    AppcastItem item = {};
    std::int64_t received = 0;
    std::optional<UpdateFailure> failure = {};
    /// Whether the program can put a new version in its own place.
    bool canInstall = false;
};

/// The one window of updates. Main thread.
class UpdateWindow {
public:
    virtual ~UpdateWindow() = default;
    /// Shows `status`. A window that was not there before leaves the keyboard to the one that has it: a key that was
    /// meant for that one must not answer.
    virtual void show(const UpdateStatus& status) = 0;
    /// Gives the window the keyboard, because the user asked for it.
    virtual void bringToFront() = 0;
    virtual void close() = 0;
    /// Emitted with the user's answer; closing the window is one too.
    [[nodiscard]] virtual Signal<UpdateChoice>& chosen() = 0;
};

}  // namespace stowpocket
