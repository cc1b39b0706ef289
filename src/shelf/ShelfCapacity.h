// SPDX-License-Identifier: MIT
#pragma once

#include "services/Preferences.h"

#include <cstdint>
#include <string_view>

namespace stowpocket {

/// Preference: the most items the shelf holds, an integer.
inline constexpr std::string_view shelfCapacityKey = "shelfCapacity";
inline constexpr std::int64_t defaultShelfCapacity = 20;

/// The capacity in force: the stored one, or the default where none above 0 is stored.
[[nodiscard]] inline std::int64_t shelfCapacity(const PreferenceStore& preferences) {
    const std::int64_t stored = preferences.integer(shelfCapacityKey);
    return stored < 1 ? defaultShelfCapacity : stored;
}

}  // namespace stowpocket
