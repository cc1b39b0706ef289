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

/// The contents of the window of updates.
struct UpdatePresentation {
    std::string title;
    std::string message = {};
    std::string notes = {};
    /// The progress of the download, from 0 to 1; none if there is no download.
    std::optional<double> progress = {};
    /// Whether work of unknown duration is in progress.
    bool isBusy = false;
    /// From left to right; the last one is what most people want.
    std::vector<UpdateButton> buttons = {};
    /// The choice made by closing the window; none while it cannot be closed.
    std::optional<UpdateChoice> onClose = {};
};

[[nodiscard]] UpdatePresentation presentationOf(const UpdateStatus& status);

}  // namespace stowpocket
