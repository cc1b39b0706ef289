// SPDX-License-Identifier: MIT
#pragma once

#include "shelf/ShelfItem.h"

#include <span>
#include <vector>

namespace stowpocket {

struct ShelfServices;

/// New items for these files, in order. Waits for the disk; may run on any thread.
[[nodiscard]] std::vector<ShelfItem> builtItems(std::span<const FileURL> urls, const ShelfServices& services);

}  // namespace stowpocket
