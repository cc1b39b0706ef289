// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace stowpocket {

/// Uninterpreted data: a bookmark, a dropped representation, the data value of a property list.
using Bytes = std::vector<std::uint8_t>;

/// A moment on the civil clock, to the microsecond: what a fractional number of seconds since 1970, stored as a
/// double, can still tell apart for the next two centuries.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

}  // namespace stowpocket
