// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <string_view>

namespace stowpocket {

/// Orders versions as their makers mean them: numbers by value, so 1.10 follows 1.9; missing parts are zero, so 1.0
/// is 1.0.0; what follows the numbers makes a version older when it is a word, as in 1.0b2 or 1.0-rc1, and newer when
/// it is a number, as in 1.0 (52). Words are compared without regard to case.
[[nodiscard]] std::weak_ordering compareVersions(std::string_view left, std::string_view right);

}  // namespace stowpocket
