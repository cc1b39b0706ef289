// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace stowpocket {

/// Whether `xml` is harmless to a property-list parser that recurses over what it has read: its elements are closed
/// in order, nested no deeper than `maxPropertyListDepth` and no more than `maxPropertyListElements`. Looks at tags
/// only; whether they make a property list is for the parser to say.
[[nodiscard]] bool isBoundedPropertyList(std::string_view xml);

inline constexpr std::size_t maxPropertyListDepth = 64;
inline constexpr std::size_t maxPropertyListElements = 200'000;

}  // namespace stowpocket
