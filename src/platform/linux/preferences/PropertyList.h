// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The maximum size that is read; a full shelf takes a hundred kilobytes.
inline constexpr std::size_t maxPropertyListSize = std::size_t{16} * 1024 * 1024;

/// Reads a property list in XML format. None if `bytes` are not one, are too large, or contain far more elements or
/// levels than any use needs. A value that PropertyValue cannot represent, such as an integer beyond 64 signed bits,
/// is left out of its array or dictionary. Any thread.
[[nodiscard]] std::optional<PropertyValue> parsePropertyList(std::string_view bytes);

/// `value` in XML format. All types are preserved, except for what the format cannot represent: a date is rounded to
/// the second, between 1933 and 2069; text that is not UTF-8, and NUL inside text, becomes U+FFFD. Any thread.
[[nodiscard]] std::string writePropertyList(const PropertyValue& value);

}  // namespace stowpocket
