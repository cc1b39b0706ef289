// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateTransport.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// Items of a list of releases on their way from the process that reads the list: each field ended by NUL. NUL
/// inside a field cannot come from such a list and is left out.
[[nodiscard]] std::string encodedItems(const std::vector<AppcastItem>& items);

/// None when `bytes` were not written by `encodedItems`.
[[nodiscard]] std::optional<std::vector<AppcastItem>> decodedItems(std::string_view bytes);

}  // namespace stowpocket
