// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateStatus.h"

#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

struct UpdateButton {
    std::string title;
    UpdateChoice choice;
    friend bool operator==(const UpdateButton&, const UpdateButton&) = default;
};

/// What the window of updates says at one moment.
struct UpdatePresentation {
    std::string title;
    std::string message = {};
    std::string notes = {};
    /// How much is done, from 0 to 1; none where nothing is being fetched.
    std::optional<double> progress = {};
    /// Whether something of unknown length goes on.
    bool isBusy = false;
    /// From left to right; the last one is what most people want.
    std::vector<UpdateButton> buttons = {};
    /// What closing the window means; nothing while it cannot be closed.
    std::optional<UpdateChoice> onClose = {};
};

[[nodiscard]] UpdatePresentation presentationOf(const UpdateStatus& status);

}  // namespace stowpocket
