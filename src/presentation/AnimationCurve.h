// SPDX-License-Identifier: MIT
#pragma once

namespace stowpocket {

/// The platform's ease-in-out curve: how far a movement has come when `progress`, from 0 to 1, of its time is over.
[[nodiscard]] double easeInOut(double progress);

}  // namespace stowpocket
