// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace stowpocket {

/// Uninterpreted data: a bookmark, a dropped representation, the data value of a property list.
using Bytes = std::vector<std::uint8_t>;

}  // namespace stowpocket
