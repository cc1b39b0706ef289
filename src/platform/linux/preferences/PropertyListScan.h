// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace stowpocket {

/// Whether `xml` is harmless to a recursive property-list parser: its elements are closed in order, nested no deeper
/// than `maxPropertyListDepth`, and there are at most `maxPropertyListElements`. Looks at tags only; whether they
/// form a property list is for the parser to decide.
[[nodiscard]] bool isBoundedPropertyList(std::string_view xml);

inline constexpr std::size_t maxPropertyListDepth = 64;
inline constexpr std::size_t maxPropertyListElements = 200'000;

}  // namespace stowpocket
