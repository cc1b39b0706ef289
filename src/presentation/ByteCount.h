// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace stowpocket {

/// A file's size as the platform writes it beside files: decimal units, bytes and KB as whole numbers, MB with at
/// most one decimal, larger units with at most two, no trailing zeros, and "Zero KB" for none.
[[nodiscard]] std::string byteCountText(std::int64_t bytes);

}  // namespace stowpocket
