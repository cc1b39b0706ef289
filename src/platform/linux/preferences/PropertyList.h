// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// A larger text is not read at all; a full shelf takes a hundred kilobytes.
inline constexpr std::size_t maxPropertyListSize = std::size_t{16} * 1024 * 1024;

/// Reads a property list in its XML form. Empty when `bytes` are none, or too large, or nested or populated beyond
/// all use. A value that PropertyValue cannot hold, such as an integer beyond 64 signed bits, is left out of its
/// array or dictionary. Any thread.
[[nodiscard]] std::optional<PropertyValue> parsePropertyList(std::string_view bytes);

/// `value` in the XML form. All types come back as they were, but for what the form cannot hold: a date is kept to
/// the second, between 1933 and 2069; text that is not UTF-8, and NUL inside text, becomes U+FFFD. Any thread.
[[nodiscard]] std::string writePropertyList(const PropertyValue& value);

}  // namespace stowpocket
