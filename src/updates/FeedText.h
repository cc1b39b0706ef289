// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

namespace stowpocket {

/// Whether the text of a feed opens an RSS item, with attributes or without. A body that is not UTF-8 has none.
[[nodiscard]] bool hasFeedItem(const Bytes& body);

}  // namespace stowpocket
