// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"

namespace stowpocket {

/// The size of the first-run window's content.
inline constexpr int onboardingWidth = 520;
inline constexpr int onboardingHeight = 420;

/// A view as wide as it wishes to be, in the middle of its row.
[[nodiscard]] inline QLayout* centred(QWidget* view) {
    return hstack(0, Spacer{}, view, Spacer{});
}
inline constexpr double onboardingCornerRadius = 20;

}  // namespace stowpocket
